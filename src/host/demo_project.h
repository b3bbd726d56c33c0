// The example project that `tally demo` writes.
#ifndef TALLY_HOST_DEMO_PROJECT_H_
#define TALLY_HOST_DEMO_PROJECT_H_

#include <cstdint>
#include <string>

/// Writes the example project, a project database with rows for every report, to the file `path`
/// (UTF-8), and replaces what stood there. With `rows` 0 it is the plain example of about 3,000
/// detail rows, which never changes; otherwise the project has about `rows` detail rows, as many
/// consumption rows and bill and quota rows, a quarter as many overview rows and fittings, and an
/// eighth as many over-height rows. The same `rows` give the same content every time.
///
/// The file is written beside its place and put there when it is complete. On failure it throws
/// CHostError, whose message names the file and the cause, and what stood there stays.
void WriteDemoProject(const std::string& path, std::int64_t rows = 0);

#endif  // TALLY_HOST_DEMO_PROJECT_H_
