// XML text to a tree, through libxml2.
#ifndef TALLY_PLATFORM_PORTABLE_LIBXML_PARSER_H_
#define TALLY_PLATFORM_PORTABLE_LIBXML_PARSER_H_

#include <memory>
#include <string_view>

#include "platform/portable/xml_tree.h"

/// The tree of a UTF-8 text that IsHarmlessXml let pass; null where it is not well-formed. A text
/// of white space alone is left out beside element siblings.
std::shared_ptr<CXmlTree> ParseXml(std::string_view text);

#endif  // TALLY_PLATFORM_PORTABLE_LIBXML_PARSER_H_
