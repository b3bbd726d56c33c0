// `tally tree`: prints a filter tree of a project.
#ifndef TALLY_HOST_TREE_COMMAND_H_
#define TALLY_HOST_TREE_COMMAND_H_

#include <string>

#include "host/output.h"

/// Both texts are UTF-8.
struct STreeArguments {
  std::string file;
  std::string tree;  ///< not yet checked
};

/// Prints the floors by height, or the system codes or component kinds below their disciplines.
/// Throws CHostError for another tree and for what cannot be read.
void RunTree(const STreeArguments& arguments, COutput& output);

#endif  // TALLY_HOST_TREE_COMMAND_H_
