#include "platform/portable/libxml_parser.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <cstddef>
#include <exception>
#include <new>
#include <vector>

namespace {

std::string_view View(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

std::string_view View(const xmlChar* text, int size) {
  return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)};
}

// Takes the parser's events.
class CTreeBuilder {
 public:
  explicit CTreeBuilder(CXmlTree& tree) : tree_(tree) {}

  void Begin(std::string_view name, const xmlChar** attributes) {
    const CXmlTree::Node element = tree_.Add(CXmlTree::EKind::Element, name, "");
    for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2) {
      tree_.AppendAttribute(element, View(attributes[0]), View(attributes[1]));
    }
    tree_.Append(open_.back().node, element);
    open_.back().hasElements = true;
    open_.push_back({element, false});
    endsInText_ = false;
  }

  void End() {
    if (open_.back().hasElements) {
      tree_.DropBlankTexts(open_.back().node);
    }
    open_.pop_back();
    endsInText_ = false;
  }

  // One text may come in pieces.
  void Text(std::string_view text) {
    if (endsInText_) {
      tree_.ExtendLast(text);
      return;
    }
    Leaf(CXmlTree::EKind::Text, "", text);
    endsInText_ = true;
  }

  void Leaf(CXmlTree::EKind kind, std::string_view name, std::string_view value) {
    tree_.Append(open_.back().node, tree_.Add(kind, name, value));
    endsInText_ = false;
  }

 private:
  struct SOpen {
    CXmlTree::Node node;
    bool hasElements;
  };

  CXmlTree& tree_;
  std::vector<SOpen> open_{{CXmlTree::kDocument, false}};
  bool endsInText_ = false;
};

// The library tells of memory that it lacks on standard error, and keeps its last error's texts.
// Neither is for the host, whose own handler comes back.
class CQuietLibrary {
 public:
  CQuietLibrary() : handler_(xmlGenericError), context_(xmlGenericErrorContext) {
    xmlSetGenericErrorFunc(this, OnMessage);
  }
  ~CQuietLibrary() {
    xmlSetGenericErrorFunc(context_, handler_);
    xmlResetLastError();
  }
  CQuietLibrary(const CQuietLibrary&) = delete;
  CQuietLibrary& operator=(const CQuietLibrary&) = delete;

  /// Without memory the parser goes on as well as it can, and a later error hides the first one.
  bool LackedMemory() const { return lackedMemory_; }
  void LookAtError() {
    const xmlError* const error = xmlGetLastError();
    lackedMemory_ = lackedMemory_ || (error != nullptr && error->code == XML_ERR_NO_MEMORY);
  }

 private:
  static void OnMessage(void* library, const char*, ...) {
    static_cast<CQuietLibrary*>(library)->LookAtError();
  }

  xmlGenericErrorFunc handler_;
  void* context_;
  bool lackedMemory_ = false;
};

// One run of the parser. No exception may pass through the library, so what a callback throws waits
// for its end.
class CParse {
 public:
  CParse(std::string_view text, CXmlTree& tree) : unread_(text), builder_(tree) {
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): Read looks at it, null at first
    context_ = xmlNewParserCtxt();
    if (context_ == nullptr) {
      throw std::bad_alloc();
    }
    if (!PushInput()) {
      xmlFreeParserCtxt(context_);
      throw std::bad_alloc();
    }
    // XML_PARSE_NOENT concerns "&amp;" in attributes: without it their reader must do that itself.
    xmlCtxtUseOptions(context_, XML_PARSE_HUGE | XML_PARSE_NOENT | XML_PARSE_NONET |
                                    XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC);
    xmlSAXHandler& handler = *context_->sax;
    handler = {};
    handler.startElement = OnBegin;
    handler.endElement = OnEnd;
    handler.characters = OnText;
    handler.ignorableWhitespace = OnText;
    handler.cdataBlock = OnCData;
    handler.comment = OnComment;
    handler.processingInstruction = OnInstruction;
    handler.error = OnMessage;
    handler.warning = OnMessage;
    context_->userData = this;
  }

  ~CParse() { xmlFreeParserCtxt(context_); }
  CParse(const CParse&) = delete;
  CParse& operator=(const CParse&) = delete;

  bool Run() {
    xmlParseDocument(context_);
    if (thrown_) {
      std::rethrow_exception(thrown_);
    }
    if (quiet_.LackedMemory()) {
      throw std::bad_alloc();
    }
    return context_->wellFormed == 1;
  }

 private:
  // The library's own way of making a context with an input loses memory where it lacks some.
  bool PushInput() {
    constexpr xmlCharEncoding kEncoding = XML_CHAR_ENCODING_UTF8;
    xmlParserInputBufferPtr buffer = xmlParserInputBufferCreateIO(Read, nullptr, this, kEncoding);
    if (buffer == nullptr) {
      return false;
    }
    xmlParserInputPtr input = xmlNewIOInputStream(context_, buffer, kEncoding);
    if (input == nullptr) {
      xmlFreeParserInputBuffer(buffer);
      return false;
    }
    if (inputPush(context_, input) < 0) {
      xmlFreeInputStream(input);
      return false;
    }
    return true;
  }

  // The text ends with the first error, or the parser would look for more of them to the end.
  static int Read(void* parse, char* buffer, int size) {
    auto& self = *static_cast<CParse*>(parse);
    if (self.context_ != nullptr && self.context_->wellFormed == 0) {
      return 0;
    }
    const std::size_t count = self.unread_.copy(buffer, static_cast<std::size_t>(size));
    self.unread_.remove_prefix(count);
    return static_cast<int>(count);
  }

  template <class TCall>
  static void Guard(void* parse, TCall call) {
    auto& self = *static_cast<CParse*>(parse);
    if (self.thrown_) {
      return;
    }
    try {
      call(self.builder_);
    } catch (...) {
      self.thrown_ = std::current_exception();
      xmlStopParser(self.context_);
    }
  }

  static void OnBegin(void* parse, const xmlChar* name, const xmlChar** attributes) {
    Guard(parse, [&](CTreeBuilder& builder) { builder.Begin(View(name), attributes); });
  }
  static void OnEnd(void* parse, const xmlChar*) {
    Guard(parse, [](CTreeBuilder& builder) { builder.End(); });
  }
  static void OnText(void* parse, const xmlChar* text, int size) {
    Guard(parse, [&](CTreeBuilder& builder) { builder.Text(View(text, size)); });
  }
  static void OnCData(void* parse, const xmlChar* text, int size) {
    Guard(parse, [&](CTreeBuilder& builder) {
      builder.Leaf(CXmlTree::EKind::CData, "", View(text, size));
    });
  }
  static void OnComment(void* parse, const xmlChar* text) {
    Guard(parse,
          [&](CTreeBuilder& builder) { builder.Leaf(CXmlTree::EKind::Comment, "", View(text)); });
  }
  static void OnInstruction(void* parse, const xmlChar* target, const xmlChar* data) {
    Guard(parse, [&](CTreeBuilder& builder) {
      builder.Leaf(CXmlTree::EKind::Instruction, View(target), View(data));
    });
  }
  static void OnMessage(void* parse, const char*, ...) {
    static_cast<CParse*>(parse)->quiet_.LookAtError();
  }

  CQuietLibrary quiet_;
  std::string_view unread_;
  CTreeBuilder builder_;
  xmlParserCtxtPtr context_ = nullptr;
  std::exception_ptr thrown_;
};

}  // namespace

std::shared_ptr<CXmlTree> ParseXml(std::string_view text) {
  // The library does not tell of all memory that it lacks, and what is taken for ill-formed may be
  // overwritten by its owner. An ill-formed text is so the second time, too.
  constexpr int kAttempts = 2;
  for (int i = 0; i < kAttempts; ++i) {
    auto tree = std::make_shared<CXmlTree>();
    if (CParse(text, *tree).Run()) {
      return tree;
    }
  }
  return nullptr;
}
