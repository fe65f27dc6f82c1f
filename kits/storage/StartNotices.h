#pragma once

#include <memory>
#include <string>

namespace kits {

/// A program that is about to start.
struct StartingProgram
{
    std::string name;        // as people read it
    std::string icon;        // its name in the theme, or a path; may be empty
    std::string windowClass; // of its windows, as its desktop file says it; may be empty
    std::string desktopFile; // the path
};

/// Tells the desktop which programs start, so that it may show so, and lets their windows come to
/// the front: they answer what the person did last.
///
/// Thread: any.
class StartNotices
{
public:
    virtual ~StartNotices() = default;

    /// Tells of it. Returns what the program is to say of itself (DESKTOP_STARTUP_ID); "" when
    /// nobody was told.
    virtual std::string Begin(const StartingProgram& program) = 0;
    /// It did not start after all.
    virtual void Fail(const std::string& id) = 0;

    /// Whoever knows the desktop sets it; null: nobody.
    static void Set(std::shared_ptr<StartNotices> notices);
    static std::shared_ptr<StartNotices> Get();
};

} // namespace kits
