// `tally batch`: answers requests for as long as its input lasts.
#ifndef TALLY_HOST_BATCH_H_
#define TALLY_HOST_BATCH_H_

#include <istream>
#include <string_view>

#include "host/batch_json.h"
#include "host/open_project.h"
#include "host/output.h"
#include "platform/xml_service.h"

/// Speaks the protocol of docs/batch_protocol.md for one project. What a request leaves out has its
/// default and not what the request before it set.
class CBatch {
 public:
  /// Both must outlive the batch.
  CBatch(COpenProject& project, COutput& output) : project_(project), output_(output) {}

  /// Answers line by line to the end of `input`. Throws CHostError where the input cannot be read
  /// or the output takes no more.
  void Run(std::istream& input);

  /// Writes the answer to one line, with the line end, and flushes it.
  void Answer(std::string_view line);

 private:
  void Serve(const SRowsCall& call);
  void Serve(const SSpecsCall& call);
  void Serve(const STreeCall& call);
  void Serve(const SOpenCall& call);
  void Serve(const SStatusReadCall& call);
  void Serve(const SStatusSetCall& call);
  void Serve(const SStatusSaveCall& call);
  void Serve(const SStatusGetCall& call);
  void SetState(const SRowsCall& call);
  void WriteTexts(const Report::CellArray& texts);
  void WriteFloors(IReport& tree);
  void WriteTextMap(Report::ETreeType type, IReport& tree);
  void WriteStatus(std::string_view before);
  void WriteError(std::string_view kind, std::string_view message);
  void WriteXmlError(const CXmlError& error);

  COpenProject& project_;
  COutput& output_;
};

#endif  // TALLY_HOST_BATCH_H_
