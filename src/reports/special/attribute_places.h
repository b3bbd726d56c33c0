// The order of the attributes of the paint, duct and insulation tables.
#ifndef TALLY_REPORTS_SPECIAL_ATTRIBUTE_PLACES_H_
#define TALLY_REPORTS_SPECIAL_ATTRIBUTE_PLACES_H_

#include <vector>

#include "report_model/report_data_node.h"
#include "reports/special/special_row.h"

/// Gives the attributes of the items their places, in which values of one name compare by
/// `valueOrder`. Answers false, and leaves them as they were, where the texts are not proved to
/// have an order in which only equal ones are equal.
bool PlaceAttributes(const std::vector<SDetailSums*>& groups, ETextOrder valueOrder);

#endif  // TALLY_REPORTS_SPECIAL_ATTRIBUTE_PLACES_H_
