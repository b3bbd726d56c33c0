// Settings of the engine that more than one command sets.
#ifndef TALLY_HOST_REPORT_STATE_H_
#define TALLY_HOST_REPORT_STATE_H_

/// Whether the calculation books divide their trees by type. A change drops the books that are
/// folded.
void SetDividedNode(bool isDividedNode);

#endif  // TALLY_HOST_REPORT_STATE_H_
