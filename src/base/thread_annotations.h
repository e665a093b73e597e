#pragma once

// What clang's -Wthread-safety checks at compile time
// (https://clang.llvm.org/docs/ThreadSafetyAnalysis.html); nothing for other compilers.

#ifdef __clang__
#define TARVENDO_THREAD_ANNOTATION(annotation) __attribute__((annotation))
#else
#define TARVENDO_THREAD_ANNOTATION(annotation)
#endif

/// The class is a lock.
#define TARVENDO_CAPABILITY(name) TARVENDO_THREAD_ANNOTATION(capability(name))

/// The class holds a lock from its construction to its destruction.
#define TARVENDO_SCOPED_CAPABILITY TARVENDO_THREAD_ANNOTATION(scoped_lockable)

/// The member is used by the holder of `lock` only.
#define TARVENDO_GUARDED_BY(lock) TARVENDO_THREAD_ANNOTATION(guarded_by(lock))

/// The function is called by the holder of the lock only.
#define TARVENDO_REQUIRES(...) TARVENDO_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))

/// The function must not be called by a holder of the lock: it takes it by itself.
#define TARVENDO_EXCLUDES(...) TARVENDO_THREAD_ANNOTATION(locks_excluded(__VA_ARGS__))

/// The function takes the lock, or gives it back.
#define TARVENDO_ACQUIRE(...) TARVENDO_THREAD_ANNOTATION(acquire_capability(__VA_ARGS__))
#define TARVENDO_RELEASE(...) TARVENDO_THREAD_ANNOTATION(release_capability(__VA_ARGS__))
