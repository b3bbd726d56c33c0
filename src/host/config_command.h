// `tally config`: prints or changes a setting of the installation.
#ifndef TALLY_HOST_CONFIG_COMMAND_H_
#define TALLY_HOST_CONFIG_COMMAND_H_

#include <optional>
#include <string>

#include "host/output.h"

/// The texts are UTF-8 and not yet checked.
struct SConfigArguments {
  std::string setting;
  std::optional<std::string> value;  ///< left out: print the one that holds
};

/// Throws CHostError for an unknown setting or value, and where the file cannot be written.
void RunConfig(const SConfigArguments& arguments, COutput& output);

#endif  // TALLY_HOST_CONFIG_COMMAND_H_
