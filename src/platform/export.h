// Which names a shared build of the library lets out.
#ifndef TALLY_PLATFORM_EXPORT_H_
#define TALLY_PLATFORM_EXPORT_H_

/// Marks the classes and functions that a host may link to. Everything else stays inside a shared
/// library, although its header may be installed because a marked class needs it.
#ifdef __GNUC__
#define TALLY_API __attribute__((visibility("default")))
#else
#define TALLY_API
#endif

#endif  // TALLY_PLATFORM_EXPORT_H_
