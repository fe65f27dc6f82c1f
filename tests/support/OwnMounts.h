#pragma once

/// Gives the calling process, which must have one thread, mounts of its own: of a new user
/// namespace, or of a mount namespace where we are root. False where neither is to be had.
bool EnterOwnMounts();
