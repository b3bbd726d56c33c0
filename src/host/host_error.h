// A mistake of the user or of the surroundings.
#ifndef TALLY_HOST_HOST_ERROR_H_
#define TALLY_HOST_HOST_ERROR_H_

#include <stdexcept>

/// Ends the program with exit status 2. The message (UTF-8) is what the user reads: it names the
/// file, the option or the value, and what is allowed.
class CHostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

#endif  // TALLY_HOST_HOST_ERROR_H_
