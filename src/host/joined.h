// Messages and names out of parts.
#ifndef TALLY_HOST_JOINED_H_
#define TALLY_HOST_JOINED_H_

#include <string>
#include <string_view>

/// The parts, one behind the other.
template <class... TParts>
std::string Joined(const TParts&... parts) {
  std::string text;
  text.reserve((std::string_view(parts).size() + ... + 0));
  (text.append(std::string_view(parts)), ...);
  return text;
}

#endif  // TALLY_HOST_JOINED_H_
