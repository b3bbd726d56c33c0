#include "platform/portable/libxml_document.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/portable/file_replacement.h"
#include "platform/portable/libxml_parser.h"
#include "platform/portable/utf8_text.h"
#include "platform/portable/xml_source_text.h"
#include "platform/portable/xml_text_writer.h"
#include "platform/portable/xml_tree_node.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 30;

// None for a name that no file can have.
std::optional<fs::path> FileName(const std::wstring& path) {
  if (path.empty() || path.find(L'\0') != std::wstring::npos) {
    return std::nullopt;
  }
  const std::string name = Utf8FromWide(path);
  return fs::path(std::u8string(name.begin(), name.end()));
}

std::optional<std::string> ReadFile(const std::wstring& path) {
  const std::optional<fs::path> file = FileName(path);
  std::error_code error;
  if (!file || !fs::is_regular_file(*file, error)) {
    return std::nullopt;
  }
  const std::uintmax_t size = fs::file_size(*file, error);
  if (error || size > kMostBytes) {
    return std::nullopt;
  }
  std::ifstream stream(*file, std::ios::binary);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(size));
  if (!stream) {
    return std::nullopt;
  }
  return bytes;
}

std::shared_ptr<CXmlTree> ReadTree(const std::wstring& path) {
  std::optional<std::string> text;
  if (const std::optional<std::string> bytes = ReadFile(path)) {
    text = ReadXmlText(*bytes);
  }
  return text && IsHarmlessXml(*text) ? ParseXml(*text) : nullptr;
}

}  // namespace

CLibxmlDocument::CLibxmlDocument(std::shared_ptr<CFileCalls> calls)
    : calls_(std::move(calls)), tree_(std::make_shared<CXmlTree>()) {}

std::shared_ptr<IXmlElement> CLibxmlDocument::createElement(const std::wstring& name) {
  return std::make_shared<CXmlTreeNode>(
      tree_, tree_->Add(CXmlTree::EKind::Element, XmlNameUtf8(name), ""));
}

void CLibxmlDocument::appendChild(const std::shared_ptr<IXmlNode>& node) {
  CXmlTreeNode(tree_, CXmlTree::kDocument).appendChild(node);
}

bool CLibxmlDocument::load(const std::wstring& path) {
  std::shared_ptr<CXmlTree> tree = ReadTree(path);
  const bool isLoaded = tree != nullptr;
  tree_ = isLoaded ? std::move(tree) : std::make_shared<CXmlTree>();
  return isLoaded;
}

void CLibxmlDocument::save(const std::wstring& path) {
  if (tree_->FirstChild(CXmlTree::kDocument) == CXmlTree::kNone) {
    throw CXmlError(CXmlError::kFailed,
                    "cannot save '" + Utf8FromWide(path) + "': the document is empty");
  }
  const std::optional<fs::path> file = FileName(path);
  const std::error_code error = file ? TryReplaceFile(*file, XmlText(*tree_), *calls_)
                                     : std::make_error_code(std::errc::invalid_argument);
  if (error) {
    throw CXmlError(CXmlError::kFailed,
                    "cannot save '" + Utf8FromWide(path) + "': " + error.message());
  }
}

std::shared_ptr<IXmlNode> CLibxmlDocument::selectSingleNode(const std::wstring& name) {
  const std::string wanted = Utf8FromWide(name);
  for (CXmlTree::Node at = tree_->FirstChild(CXmlTree::kDocument); at != CXmlTree::kNone;
       at = tree_->NextSibling(at)) {
    if (tree_->Kind(at) == CXmlTree::EKind::Element && tree_->Name(at) == wanted) {
      return std::make_shared<CXmlTreeNode>(tree_, at);
    }
  }
  return nullptr;
}
