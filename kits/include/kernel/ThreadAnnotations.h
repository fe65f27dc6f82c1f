#pragma once

// Which lock guards what, and who must hold it: clang checks it (`scripts/lint`), other compilers
// see nothing. An extension of the platform.

#if defined(__clang__)
#define KITS_ANNOTATION(text) __attribute__((text)) ///< What clang calls `text`.
#else
#define KITS_ANNOTATION(text) ///< Nothing.
#endif

/// Of a class: it is a lock, and is called `name` in warnings.
#define CAPABILITY(name) KITS_ANNOTATION(capability(name))
/// Of a class: it holds a lock from its constructor to the end of its scope.
#define SCOPED_CAPABILITY KITS_ANNOTATION(scoped_lockable)

/// Of a variable: touched under `lock` alone.
#define GUARDED_BY(lock) KITS_ANNOTATION(guarded_by(lock))
/// Of a pointer: what it points at is touched under `lock` alone.
#define PT_GUARDED_BY(lock) KITS_ANNOTATION(pt_guarded_by(lock))

/// Of a function: the caller holds these locks, before and after.
#define REQUIRES(...) KITS_ANNOTATION(requires_capability(__VA_ARGS__))
/// Of a function: the caller does not hold these locks.
#define EXCLUDES(...) KITS_ANNOTATION(locks_excluded(__VA_ARGS__))
/// Of a function: takes these locks, its own object's without an argument.
#define ACQUIRE(...) KITS_ANNOTATION(acquire_capability(__VA_ARGS__))
/// The same, if it returns the value that comes first.
#define TRY_ACQUIRE(...) KITS_ANNOTATION(try_acquire_capability(__VA_ARGS__))
/// Of a function: gives these locks back, its own object's without an argument.
#define RELEASE(...) KITS_ANNOTATION(release_capability(__VA_ARGS__))
/// Of a function: what it does with locks is beyond the analysis. Say why.
#define NO_THREAD_SAFETY_ANALYSIS KITS_ANNOTATION(no_thread_safety_analysis)
