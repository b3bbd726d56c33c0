// What a word that is not known may have been meant to be.
#ifndef TALLY_HOST_SUGGESTION_H_
#define TALLY_HOST_SUGGESTION_H_

#include <string>
#include <vector>

/// "; did you mean 'x'?" with the known word that is nearest to `word`, the first of several; empty
/// where none is near or where `word` is itself known. All texts are UTF-8.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

/// "; there is a, b", and the suggestion behind it.
std::string KnownWords(const std::string& word, const std::vector<std::string>& known);

#endif  // TALLY_HOST_SUGGESTION_H_
