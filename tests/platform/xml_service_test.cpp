#include "platform/xml_service.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/portable/libxml_service.h"
#include "platform/portable/utf8_text.h"
#include "support/failing_file_calls.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

using DocumentPtr = std::shared_ptr<IXmlDocument>;
using NodePtr = std::shared_ptr<IXmlNode>;

class Xml : public testing::Test {
 protected:
  std::wstring Path(const char* name = "file.xml") const {
    return WideFromUtf8((folder_ / name).string());
  }
  fs::path File(const char* name = "file.xml") const { return folder_ / name; }

  DocumentPtr New() { return CLibxmlService(calls_).CreateDocument(); }

  /// The root "r" of a file of these bytes; null where they do not load.
  NodePtr Load(const std::string& bytes) {
    tally_test::WriteBytes(File(), bytes);
    document_ = New();
    return document_->load(Path()) ? document_->selectSingleNode(L"r") : nullptr;
  }
  bool Loads(const std::string& bytes) {
    Load(bytes);
    return document_->selectSingleNode(L"r") != nullptr;
  }

  /// A document of one element and its text.
  DocumentPtr WithText(const std::wstring& text) {
    DocumentPtr document = New();
    const std::shared_ptr<IXmlElement> root = document->createElement(L"r");
    root->put_text(text);
    document->appendChild(root);
    return document;
  }

  /// What is in the folder.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_.Path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  tally_test::CTempFolder folder_;
  std::shared_ptr<tally_test::CFailingFileCalls> calls_ =
      std::make_shared<tally_test::CFailingFileCalls>();
  DocumentPtr document_;
};

void ExpectError(int code, const std::string& message, const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "no error: " << message;
  } catch (const CXmlError& error) {
    EXPECT_EQ(error.Code(), code);
    EXPECT_EQ(error.what(), message);
  }
}

TEST(XmlBoolean, TakesWordsInAnyCaseAndDecimalNumbers) {
  for (const wchar_t* text :
       {L"true", L"TRUE", L"tRuE", L"1", L"-1", L"+7", L"0.5", L".5", L"1e-999", L"00010"}) {
    EXPECT_TRUE(XmlBoolean(text)) << Utf8FromWide(text);
  }
  for (const wchar_t* text : {L"false", L"FALSE", L"0", L"-0", L"+0.0", L"0.", L"0e5"}) {
    EXPECT_FALSE(XmlBoolean(text)) << Utf8FromWide(text);
  }
}

TEST(XmlBoolean, RaisesTheFailedConversionForEverythingElse) {
  for (const wchar_t* text : {L"", L" ", L"yes", L"no", L"on", L"1x", L" 1", L"true ", L"0x1", L".",
                              L"e1", L"1e", L"inf", L"nan", L"-", L"是", L"1,0"}) {
    ExpectError(-2147352571, "an attribute's value is not a boolean", [&] { XmlBoolean(text); });
  }
}

TEST_F(Xml, WritesNoDeclarationAndNoWhiteSpace) {
  const DocumentPtr document = New();
  const std::shared_ptr<IXmlElement> root = document->createElement(L"报表");
  root->setAttribute(L"Name", std::wstring(L"a"));
  root->setAttribute(L"On", true);
  root->setAttribute(L"Off", false);
  root->setAttribute(L"Name", std::wstring(L"b"));
  document->appendChild(root);
  const std::shared_ptr<IXmlElement> child = document->createElement(L"c");
  root->appendChild(child);
  child->put_text(L"x");
  child->put_text(L"y");
  root->appendChild(document->createElement(L"d"));
  document->createElement(L"dropped")->put_text(L"z");
  document->save(Path());
  EXPECT_EQ(tally_test::ReadBytes(File()),
            "<报表 Name=\"b\" On=\"true\" Off=\"false\"><c>y</c><d/></报表>");
}

TEST_F(Xml, EscapesWhatAReaderWouldChange) {
  const DocumentPtr document = New();
  const std::shared_ptr<IXmlElement> root = document->createElement(L"r");
  root->setAttribute(L"a", std::wstring(L"<&>\"'\t\r\n "));
  root->put_text(L"<&>\"'\t\r\n]]>");
  document->appendChild(root);
  document->save(Path());
  EXPECT_EQ(tally_test::ReadBytes(File()),
            "<r a=\"&lt;&amp;&gt;&quot;'&#9;&#13;&#10; \">&lt;&amp;&gt;\"'\t&#13;\n]]&gt;</r>");
}

TEST_F(Xml, GivesEveryTextBackAsItWas) {
  std::wstring everything;
  for (wchar_t c = 1; c < 0xD800; ++c) {
    if (c >= 0x20 || c == L'\t' || c == L'\n' || c == L'\r') {
      everything += c;
    }
  }
  const std::vector<std::wstring> texts = {L"",
                                           L" ",
                                           L" \t ",
                                           L"\n",
                                           L"\r\n",
                                           L"\r",
                                           L"  a b  ",
                                           L"a\rb\nc\r\nd\n\re\n",
                                           L"\x85\x2028",
                                           L"<&>\"'",
                                           L"&amp;&#10;]]>",
                                           L"<![CDATA[x]]>",
                                           L"\xFFFD\xFEFF",
                                           WideFromUtf8("\U00020000\U0001F600\U0010FFFF"),
                                           std::wstring(100000, L'汉'),
                                           everything};
  for (const std::wstring& text : texts) {
    const DocumentPtr document = New();
    const std::shared_ptr<IXmlElement> root = document->createElement(L"r");
    const std::shared_ptr<IXmlElement> child = document->createElement(L"c");
    child->put_text(text);
    child->setAttribute(L"a", text);
    root->appendChild(child);
    document->appendChild(root);
    document->save(Path());
    const DocumentPtr read = New();
    ASSERT_TRUE(read->load(Path()));
    const NodePtr found = read->selectSingleNode(L"r")->childNodes()->item(0);
    EXPECT_EQ(found->nodeTypedValue(), text);
    EXPECT_EQ(found->attributes()->item(0)->nodeValue(), text);
  }
}

TEST_F(Xml, RefusesCharactersThatXmlCannotHold) {
  const std::string message = "a text holds a character that XML cannot hold";
  const std::vector<std::wstring> texts = {std::wstring(1, L'\0'),
                                           L"a\x01",
                                           L"\x1F",
                                           L"\xFFFE",
                                           L"\xFFFF",
                                           std::wstring(1, static_cast<wchar_t>(0xD800)),
                                           std::wstring(1, static_cast<wchar_t>(0xDFFF))};
  const std::shared_ptr<IXmlElement> element = New()->createElement(L"r");
  for (const std::wstring& text : texts) {
    ExpectError(-2147024809, message, [&] { element->put_text(text); });
    ExpectError(-2147024809, message, [&] { element->setAttribute(L"a", text); });
  }
  ExpectError(-2147024809, "'a b' is no name", [&] { New()->createElement(L"a b"); });
  ExpectError(-2147024809, "'' is no name", [&] { New()->createElement(L""); });
}

TEST_F(Xml, RefusesNodesThatHaveNoPlaceThere) {
  const DocumentPtr document = New();
  const std::shared_ptr<IXmlElement> root = document->createElement(L"r");
  const std::shared_ptr<IXmlElement> child = document->createElement(L"c");
  document->appendChild(root);
  root->appendChild(child);
  const std::string message = "the node cannot be appended here";
  ExpectError(-2147024809, message, [&] { child->appendChild(child); });
  ExpectError(-2147024809, message, [&] { child->appendChild(root); });
  ExpectError(-2147024809, message, [&] { root->appendChild(child); });
  ExpectError(-2147024809, message, [&] { root->appendChild(New()->createElement(L"x")); });
  ExpectError(-2147024809, message,
              [&] { document->appendChild(document->createElement(L"second")); });
  ExpectError(-2147467261, "no node to append", [&] { root->appendChild(nullptr); });
}

TEST_F(Xml, ANodeOutlivesItsDocument) {
  NodePtr root = Load("<r a='1'><c>x</c></r>");
  document_.reset();
  EXPECT_EQ(root->childNodes()->item(0)->nodeTypedValue(), L"x");
  EXPECT_EQ(root->attributes()->item(0)->nodeName(), L"a");
}

TEST_F(Xml, TellsKindsOfNodesApart) {
  const NodePtr root = Load("<r>a<!--b--><?c d?><![CDATA[e]]><f>g</f></r>");
  ASSERT_NE(root, nullptr);
  const std::shared_ptr<IXmlNodeList> children = root->childNodes();
  std::vector<std::wstring> found;
  for (std::size_t i = 0; i < children->length(); ++i) {
    const NodePtr child = children->item(i);
    found.push_back(child->nodeName() + L"=" + child->nodeTypedValue());
    EXPECT_EQ(child->attributes() == nullptr, child->nodeName() != L"f");
  }
  EXPECT_EQ(found, (std::vector<std::wstring>{L"#text=a", L"#comment=b", L"c=d",
                                              L"#cdata-section=e", L"f=g"}));
  EXPECT_EQ(root->nodeTypedValue(), L"aeg");
}

TEST_F(Xml, SelectsTheRootByItsNameAlone) {
  EXPECT_EQ(Load("<x><r/></x>"), nullptr);
  EXPECT_NE(document_->selectSingleNode(L"x"), nullptr);
}

TEST_F(Xml, LeavesOutBlanksBesideElementsOnly) {
  EXPECT_EQ(Load("<r>\n <c/>\t<d/>\r\n</r>")->childNodes()->length(), 2U);
  EXPECT_EQ(Load("<r> \t\n</r>")->nodeTypedValue(), L" \t\n");
  EXPECT_EQ(Load("<r>  a  </r>")->nodeTypedValue(), L"  a  ");
  EXPECT_EQ(Load("<r> a <c> </c> </r>")->nodeTypedValue(), L" a  ");
  EXPECT_EQ(Load("<r><c/><![CDATA[ ]]></r>")->childNodes()->length(), 2U);
}

std::string Utf16(const std::string& utf8, bool isLittle) {
  std::string bytes = isLittle ? "\xFF\xFE" : "\xFE\xFF";
  for (const wchar_t wide : WideFromUtf8(utf8)) {
    auto c = static_cast<unsigned>(wide);
    std::vector<unsigned> units = {c};
    if (c >= 0x10000) {
      units = {0xD7C0 + (c >> 10), 0xDC00 + (c & 0x3FF)};
    }
    for (const unsigned unit : units) {
      const auto high = static_cast<char>(unit >> 8);
      const auto low = static_cast<char>(unit & 0xFF);
      bytes += isLittle ? std::string{low, high} : std::string{high, low};
    }
  }
  return bytes;
}

TEST_F(Xml, ReadsUtf8AndUtf16) {
  const std::string body = "<r>汉\U00020000</r>";
  for (const std::string& bytes :
       {body, "\xEF\xBB\xBF" + body, "<?xml version=\"1.0\"?>" + body,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + body,
        "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8' standalone='yes'?>\n" + body,
        Utf16(body, true), Utf16(body, false),
        Utf16("<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + body, true)}) {
    const NodePtr root = Load(bytes);
    ASSERT_NE(root, nullptr) << bytes;
    EXPECT_EQ(root->nodeTypedValue(), WideFromUtf8("汉\U00020000"));
  }
}

TEST_F(Xml, RefusesOtherEncodings) {
  EXPECT_FALSE(Loads("<?xml version=\"1.0\" encoding=\"GBK\"?><r/>"));
  EXPECT_FALSE(Loads("<?xml version=\"1.0\" encoding=\"US-ASCII\"?><r/>"));
  EXPECT_FALSE(Loads("<?xml version=\"1.0\" encoding=\"UTF-16\"?><r/>"));
  EXPECT_FALSE(Loads(Utf16("<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>", true)));
  EXPECT_FALSE(Loads(Utf16("<r/>", true).substr(2)));
  EXPECT_FALSE(Loads(Utf16("<r/>", true) + "x"));
  EXPECT_FALSE(Loads(std::string("\xFF\xFE\x00\xD8", 4) + Utf16("<r/>", true).substr(2)));
  EXPECT_FALSE(Loads("<r>\xD6\xD0</r>"));
  EXPECT_FALSE(Loads("<r>\xC1\x81</r>"));
  EXPECT_FALSE(Loads("<r>\xED\xA0\x80</r>"));
  EXPECT_FALSE(Loads("<r>\xE6\xB1</r>"));
  EXPECT_FALSE(Loads("\xEF\xBB\xBF\xEF\xBB\xBF<r/>"));
  EXPECT_FALSE(Loads(std::string("<r>\0</r>", 8)));
}

TEST_F(Xml, RefusesWhatIsNotWellFormed) {
  for (const char* bytes : {"",
                            " ",
                            "r",
                            "<r>",
                            "<r></s>",
                            "<r/><r/>",
                            "<r/>x",
                            "x<r/>",
                            "<r a=1/>",
                            "<r a='1' a='2'/>",
                            "<r>&nbsp;</r>",
                            "<r>&#0;</r>",
                            "<r>&#x1;</r>",
                            "<r>&amp</r>",
                            "<r a='<'/>",
                            "<r>]]></r>",
                            "<r><!-- -- --></r>",
                            "<r><? ?></r>",
                            "<r><![CDATA[</r>",
                            " <?xml version='1.0'?><r/>",
                            "<?xml version='2.0'?><r/>",
                            "<1/>",
                            "< r/>",
                            "<r b='1'c='2'/>"}) {
    EXPECT_FALSE(Loads(bytes)) << bytes;
  }
  EXPECT_TRUE(Loads("<r>&#9;&lt;</r>"));
}

TEST_F(Xml, AFailedLoadLeavesAnEmptyDocument) {
  ASSERT_NE(Load("<r/>"), nullptr);
  EXPECT_FALSE(document_->load(Path("none.xml")));
  EXPECT_EQ(document_->selectSingleNode(L"r"), nullptr);
  EXPECT_FALSE(document_->load(L""));
  EXPECT_FALSE(document_->load(std::wstring(L"a\0b", 3)));
  EXPECT_FALSE(document_->load(WideFromUtf8(folder_.Path().string())));
  EXPECT_FALSE(document_->load(L"/dev/zero"));
}

TEST_F(Xml, RefusesDocumentTypesWithoutDelay) {
  const auto begin = std::chrono::steady_clock::now();
  std::string bomb = "<!DOCTYPE r [<!ENTITY a0 \"aaaaaaaaaa\">";
  for (int i = 1; i < 30; ++i) {
    const std::string before = "&a" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY a" + std::to_string(i) + " \"";
    for (int j = 0; j < 10; ++j) {
      bomb += before;
    }
    bomb += "\">";
  }
  EXPECT_FALSE(Loads(bomb + "]><r>&a29;</r>"));
  EXPECT_FALSE(Loads("<!DOCTYPE r SYSTEM \"http://192.0.2.1/r.dtd\"><r/>"));
  EXPECT_FALSE(Loads("<!DOCTYPE r [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><r>&e;</r>"));
  EXPECT_FALSE(Loads("<!DOCTYPE r [<!ENTITY % p SYSTEM \"http://192.0.2.1/p\">%p;]><r/>"));
  EXPECT_FALSE(Loads("<!DOCTYPE r><r/>"));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

std::string Repeated(const std::string& text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

TEST_F(Xml, ReadsDeepDocuments) {
  constexpr std::size_t kDepth = 1000000;
  const NodePtr root =
      Load("<r>" + Repeated("<a>", kDepth) + "x" + Repeated("</a>", kDepth) + "</r>");
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->nodeTypedValue(), L"x");
  document_->save(Path("copy.xml"));
  EXPECT_EQ(tally_test::ReadBytes(File("copy.xml")), tally_test::ReadBytes(File()));
}

TEST_F(Xml, ReadsLargeDocuments) {
  constexpr std::size_t kSize = 50000000;
  const NodePtr root = Load("<r>" + std::string(kSize, 'x') + "</r>");
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->nodeTypedValue().size(), kSize);
}

TEST_F(Xml, EndsSoonOnWhatWouldTakeAParserForEver) {
  std::string attributes;
  std::string names;
  std::string entities;
  for (int i = 0; i < 1000000; ++i) {
    const std::string number = std::to_string(i);
    attributes += " a" + number + "='1'";
    names += "<a" + number + "/>";
    entities += "&a" + number + ";";
  }
  EXPECT_FALSE(Loads("<r" + attributes + "/>"));
  EXPECT_FALSE(Loads("<r>" + names + "</r>"));
  EXPECT_FALSE(Loads("<r>" + entities + "</r>"));
  EXPECT_FALSE(Loads("<r>" + Repeated("</x>", 1000000)));
  EXPECT_FALSE(Loads("<r></x><b" + attributes + "/></r>"));
}

TEST_F(Xml, AFailingCallAtEachStepLeavesTheOldFile) {
  WithText(L"old")->save(Path());
  std::vector<std::string> failed;
  for (int step = 1;; ++step) {
    calls_->steps = 0;
    calls_->failAt = step;
    calls_->failed.clear();
    try {
      WithText(L"new")->save(Path());
    } catch (const CXmlError& error) {
      EXPECT_EQ(error.Code(), -2147467259);
      EXPECT_EQ(error.what(), "cannot save '" + File().string() + "': No space left on device");
      EXPECT_EQ(tally_test::ReadBytes(File()), "<r>old</r>");
      EXPECT_EQ(Names(), std::vector<std::string>{"file.xml"});
      failed.push_back(calls_->failed);
      continue;
    }
    break;
  }
  EXPECT_EQ(failed, (std::vector<std::string>{"stat", "access", "open", "change mode", "write",
                                              "flush", "close", "rename"}));
  EXPECT_EQ(tally_test::ReadBytes(File()), "<r>new</r>");
  EXPECT_EQ(Names(), std::vector<std::string>{"file.xml"});
}

TEST_F(Xml, AFailingFirstSaveLeavesNothing) {
  calls_->failAt = 3;  // the write
  EXPECT_THROW(WithText(L"new")->save(Path()), CXmlError);
  EXPECT_EQ(calls_->failed, "write");
  EXPECT_TRUE(Names().empty());
}

TEST_F(Xml, WritesThatTakePartOnlyAreContinued) {
  calls_->writesBitByBit = true;
  WithText(std::wstring(1000, L'x'))->save(Path());
  EXPECT_EQ(tally_test::ReadBytes(File()), "<r>" + std::string(1000, 'x') + "</r>");
}

TEST_F(Xml, AnInterruptedWriteIsRepeated) {
  calls_->failAt = 3;
  calls_->error = EINTR;
  WithText(L"new")->save(Path());
  EXPECT_EQ(tally_test::ReadBytes(File()), "<r>new</r>");
}

TEST_F(Xml, KeepsPermissionsAndLinks) {
  WithText(L"old")->save(Path("target.xml"));
  fs::permissions(File("target.xml"), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("target.xml", File("link.xml"));
  WithText(L"new")->save(Path("link.xml"));
  EXPECT_TRUE(fs::is_symlink(File("link.xml")));
  EXPECT_EQ(tally_test::ReadBytes(File("target.xml")), "<r>new</r>");
  EXPECT_EQ(fs::status(File("target.xml")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Xml, SaysWhyItCannotSave) {
  const auto expect = [&](const std::wstring& path, const std::string& reason) {
    ExpectError(-2147467259, "cannot save '" + Utf8FromWide(path) + "': " + reason,
                [&] { WithText(L"x")->save(path); });
  };
  expect(Path("none/file.xml"), "No such file or directory");
  expect(WideFromUtf8(folder_.Path().string()), "Is a directory");
  expect(L"/dev/full", "Invalid argument");
  expect(L"", "Invalid argument");
  ExpectError(-2147467259, "cannot save '" + File().string() + "': the document is empty",
              [&] { New()->save(Path()); });
  EXPECT_TRUE(Names().empty());
}

/// Runs `call` in a child process and answers its exit status; 7 stands for a CXmlError.
int InChild(const std::function<void()>& call) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      call();
    } catch (const CXmlError&) {
      _exit(7);
    } catch (...) {
      _exit(8);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(Xml, AFullDiskLeavesTheOldFile) {
  WithText(L"old")->save(Path());
  EXPECT_EQ(InChild([&] {
              // What the limit on a file's size refuses, a full disk refuses in the same way.
              std::signal(SIGXFSZ, SIG_IGN);
              const rlimit limit = {5000, 5000};
              setrlimit(RLIMIT_FSIZE, &limit);
              WithText(std::wstring(100000, L'x'))->save(Path());
            }),
            7);
  EXPECT_EQ(tally_test::ReadBytes(File()), "<r>old</r>");
  EXPECT_EQ(Names(), std::vector<std::string>{"file.xml"});
}

TEST_F(Xml, AReadOnlyFolderLeavesTheOldFile) {
  WithText(L"old")->save(Path());
  fs::permissions(File(), fs::perms::all);
  fs::permissions(folder_.Path(), fs::perms::owner_read | fs::perms::owner_exec |
                                      fs::perms::others_read | fs::perms::others_exec);
  EXPECT_EQ(InChild([&] {
              // The administrator may write everywhere, so another user tries.
              if (geteuid() == 0 && setuid(65534) != 0) {
                _exit(9);
              }
              WithText(L"new")->save(Path());
            }),
            7);
  fs::permissions(folder_.Path(), fs::perms::owner_all);
  EXPECT_EQ(tally_test::ReadBytes(File()), "<r>old</r>");
  EXPECT_EQ(Names(), std::vector<std::string>{"file.xml"});
}

TEST_F(Xml, AKilledProcessLeavesAWholeDocument) {
  WithText(std::wstring(3000, L'0'))->save(Path());
  for (int round = 0; round < 60; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (int i = 0;; ++i) {
        WithText(std::wstring(3000, static_cast<wchar_t>(L'0' + i % 10)))->save(Path());
      }
    }
    std::this_thread::sleep_for(std::chrono::microseconds(1000 + 911 * (round % 37)));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string bytes = tally_test::ReadBytes(File());
    ASSERT_EQ(bytes.size(), 3007U);
    ASSERT_EQ(bytes, "<r>" + std::string(3000, bytes[3]) + "</r>");
  }
}

}  // namespace
