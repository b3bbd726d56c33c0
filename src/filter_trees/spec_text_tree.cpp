#include "filter_trees/spec_text_tree.h"

#include <utility>

void CSpecTextTree::Add(const std::wstring& recordSpec, std::wstring text) {
  texts_[recordSpec].push_back(std::move(text));
}
