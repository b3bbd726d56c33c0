// A tree to XML text.
#ifndef TALLY_PLATFORM_PORTABLE_XML_TEXT_WRITER_H_
#define TALLY_PLATFORM_PORTABLE_XML_TEXT_WRITER_H_

#include <string>

#include "platform/portable/xml_tree.h"

/// The document in UTF-8, without declaration and without white space between elements. Line ends
/// and tabs that a reader would change are written as character references.
std::string XmlText(const CXmlTree& tree);

#endif  // TALLY_PLATFORM_PORTABLE_XML_TEXT_WRITER_H_
