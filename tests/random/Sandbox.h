#pragma once

#include <string>

/// The only folder of the sandbox that can be written to.
inline constexpr char kSandboxHome[] = "/home";
/// What is there for the program to read, besides the system's.
inline constexpr char kSandboxShare[] = "/share";
inline constexpr char kSandboxFonts[] = "/share/fonts.conf";

/// Shuts the calling process, which must have one thread, in for good: nothing but kSandboxHome, 64
/// MB in memory, can be written to from then on, and no program can be started.
///
/// It sees a root folder of its own: the system's programs and libraries, /proc and kSandboxHome.
/// Whoever was root is nobody afterwards. `place` is an empty folder that the new root is mounted
/// on, where nobody else sees it. Returns why that is not to be had, empty when it is done; after a
/// failure the process must end.
///
/// `fonts` is the text of the new root's file kSandboxFonts.
std::string EnterSandbox(const std::string& place, const std::string& fonts);
