// The references that the rows of the summaries list.
#ifndef TALLY_REPORTS_SHARED_SUMMARY_REFERENCES_H_
#define TALLY_REPORTS_SHARED_SUMMARY_REFERENCES_H_

#include <string>
#include <vector>

#include "report_model/report_data_node.h"

/// Where the extra "$" of a result's references stands.
enum class EChainMark { Behind, Ahead };

/// Appends the component texts of `results`, each with its extra "$".
void AppendReferences(std::wstring& text, const std::vector<const CReportResult*>& results,
                      EChainMark mark);

/// Sees to it that `first` and all below it have their references, those of the results among them
/// in the order of the walk.
void KeepReferences(CReportSysCode& first, EChainMark mark);

#endif  // TALLY_REPORTS_SHARED_SUMMARY_REFERENCES_H_
