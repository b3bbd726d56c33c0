// What the fitting summary keeps of its fittings from the fold on.
#ifndef TALLY_REPORTS_CONSUMPTION_FITTINGS_MAKER_H_
#define TALLY_REPORTS_CONSUMPTION_FITTINGS_MAKER_H_

#include "report_model/report_data_node.h"

/// Lists the fittings of each component kind (CReportCategory::fittings), with what counts of them
/// where nothing is left out and with their places, where they have some. REQUIRES: the attributes
/// have theirs (PlaceAttributeNames).
void MakeFittings(const Report::NodeMap& root);

#endif  // TALLY_REPORTS_CONSUMPTION_FITTINGS_MAKER_H_
