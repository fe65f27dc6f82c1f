#pragma once

// What a mutex guards and who must hold it, for clang's analysis; other compilers skip it.
#if defined(__clang__)
#define KITS_ANNOTATION(text) __attribute__((text))
#else
#define KITS_ANNOTATION(text)
#endif

#define CAPABILITY(name) KITS_ANNOTATION(capability(name))
#define SCOPED_CAPABILITY KITS_ANNOTATION(scoped_lockable)
#define GUARDED_BY(mutex) KITS_ANNOTATION(guarded_by(mutex))
#define PT_GUARDED_BY(mutex) KITS_ANNOTATION(pt_guarded_by(mutex))
#define REQUIRES(...) KITS_ANNOTATION(requires_capability(__VA_ARGS__))
#define EXCLUDES(...) KITS_ANNOTATION(locks_excluded(__VA_ARGS__))
#define ACQUIRE(...) KITS_ANNOTATION(acquire_capability(__VA_ARGS__))
#define TRY_ACQUIRE(...) KITS_ANNOTATION(try_acquire_capability(__VA_ARGS__))
#define RELEASE(...) KITS_ANNOTATION(release_capability(__VA_ARGS__))
#define NO_THREAD_SAFETY_ANALYSIS KITS_ANNOTATION(no_thread_safety_analysis)
