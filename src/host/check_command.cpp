#include "host/check_command.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "host/host_error.h"
#include "host/joined.h"
#include "host/open_project.h"
#include "host/project_tables.h"
#include "host/terminal_text.h"
#include "platform/portable/sqlite_project.h"
#include "platform/portable/sqlite_table_reader.h"
#include "platform/portable/utf8_text.h"

namespace {

using Ids = std::vector<std::int64_t>;

// The columns in one list: keys, texts, references.
std::string SelectAll(const SProjectTable& table) {
  std::string keys;
  for (const char* key : table.keys) {
    keys += Joined(keys.empty() ? "" : ", ", key);
  }
  std::string columns = keys;
  for (const char* text : table.texts) {
    columns += Joined(", ", text);
  }
  for (const SReferenceColumn& reference : table.references) {
    columns += Joined(", ", reference.name);
  }
  return Joined("SELECT ", columns, " FROM ", table.name, " ORDER BY ", keys);
}

// What is wrong with a text; null for nothing.
const char* FaultOf(std::string_view bytes) {
  if (Utf8FromWide(WideFromUtf8(bytes)) != bytes) {
    return " is not well-formed UTF-8";
  }
  return bytes.find('\0') == std::string_view::npos ? nullptr : " holds U+0000";
}

// Every table is gone through once: a hostile file is allowed no more work than that.
class CProjectCheck {
 public:
  CProjectCheck(CSqliteProject& project, COutput& output) : project_(project), output_(output) {}

  void WriteCounts();
  void Check(const SProjectTable& table);
  std::size_t FindingCount() const { return findingCount_; }

 private:
  std::optional<std::int64_t> CountRows(const SProjectTable& table);
  void CheckRow(const SProjectTable& table, CSqliteTableReader& reader);
  bool IsMissing(const SReferenceColumn& reference, std::int64_t id) const;
  void WriteFinding(const SProjectTable& table, CSqliteTableReader& reader,
                    const std::string& text);
  void WriteLine(const std::string& line);

  CSqliteProject& project_;
  COutput& output_;
  std::map<std::string_view, Ids> ids_;  // of the tables that could be read
  std::size_t findingCount_ = 0;
};

std::optional<std::int64_t> CProjectCheck::CountRows(const SProjectTable& table) {
  try {
    project_.RequirePlainTable(table.name);
    CSqliteTableReader reader(project_, table.name,
                              Joined("SELECT count(*) FROM ", table.name).c_str());
    reader.Step();
    return reader.Integer(0);
  } catch (const CSqliteFault&) {
    return std::nullopt;  // the check of the table tells why
  }
}

void CProjectCheck::WriteCounts() {
  WriteLine(Joined("version: ", std::to_string(project_.UserVersion())));
  for (const SProjectTable& table : ProjectTables()) {
    const std::optional<std::int64_t> count = CountRows(table);
    WriteLine(Joined("rows of ", table.name, ": ", count ? std::to_string(*count) : "unknown"));
  }
}

void CProjectCheck::Check(const SProjectTable& table) {
  try {
    project_.RequirePlainTable(table.name);
    CSqliteTableReader reader(project_, table.name, SelectAll(table).c_str());
    Ids ids;
    while (reader.Step()) {
      CheckRow(table, reader);
      if (table.HasId()) {
        ids.push_back(reader.Integer(0));
      }
    }
    ids_.emplace(table.name, std::move(ids));
  } catch (const CSqliteFault& fault) {
    WriteLine(Joined("table ", table.name, " cannot be read: ", fault.what()));
    ++findingCount_;
  }
}

void CProjectCheck::CheckRow(const SProjectTable& table, CSqliteTableReader& reader) {
  int column = static_cast<int>(table.keys.size());
  for (const char* text : table.texts) {
    if (const char* fault = FaultOf(reader.Bytes(column))) {
      WriteFinding(table, reader, Joined(text, fault));
    }
    ++column;
  }
  for (const SReferenceColumn& reference : table.references) {
    const std::int64_t id = reader.Integer(column);
    if (IsMissing(reference, id)) {
      WriteFinding(
          table, reader,
          Joined(reference.name, " ", std::to_string(id), " has no record in ", reference.table));
    }
    ++column;
  }
}

bool CProjectCheck::IsMissing(const SReferenceColumn& reference, std::int64_t id) const {
  const auto ids = ids_.find(reference.table);
  return ids != ids_.end() && !std::binary_search(ids->second.begin(), ids->second.end(), id);
}

void CProjectCheck::WriteFinding(const SProjectTable& table, CSqliteTableReader& reader,
                                 const std::string& text) {
  std::string row;
  if (table.HasId()) {
    row = std::to_string(reader.Integer(0));
  } else {
    for (std::size_t i = 0; i < table.keys.size(); ++i) {
      row +=
          Joined(i == 0 ? "'" : ", '", ToTerminalText(reader.Text(static_cast<int>(i))).bytes, "'");
    }
  }
  WriteLine(Joined("table ", table.name, ", row ", row, ": ", text));
  ++findingCount_;
}

void CProjectCheck::WriteLine(const std::string& line) {
  output_.Write(line);
  output_.Write("\n");
}

// The last line.
std::string Summary(std::size_t findingCount) {
  switch (findingCount) {
    case 0:
      return "no findings\n";
    case 1:
      return "1 finding\n";
    default:
      return std::to_string(findingCount) + " findings\n";
  }
}

}  // namespace

bool RunCheck(const SCheckArguments& arguments, COutput& output) {
  // Says what does not open as every command does.
  const COpenProject opened(arguments.file);
  try {
    CSqliteProject project(WideFromUtf8(arguments.file));
    CProjectCheck check(project, output);
    check.WriteCounts();
    for (const SProjectTable& table : ProjectTables()) {
      check.Check(table);
    }
    output.Write(Summary(check.FindingCount()));
    output.Flush();
    return check.FindingCount() == 0;
  } catch (const CSqliteFault& fault) {
    throw CHostError(Joined("cannot open '", arguments.file, "': ", fault.what()));
  }
}
