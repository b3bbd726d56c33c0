// Formulas and sums of the calculation books.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_FORMULA_SUM_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_FORMULA_SUM_H_

#include <array>
#include <string>

#include "report_model/report_data_node.h"

/// The four quantities of a detail result, each times the number of its components.
std::array<double, 4> ComponentQuantities(const CReportResultDetail& detail);

/// Adds `count` times the four quantities to the sums.
void AddQuantities(std::array<double, 4>& sums, const std::array<double, 4>& quantities, int count);

/// Joins a quantity behind "+".
void AddTerm(std::wstring& formula, double quantity);

/// Appends the formula of one circuit: the repeat formula, times the floors if these are several.
void AppendCircuitFormula(std::wstring& text, const CReportResultDetail& detail, int floorCount);

/// Appends the component text and "$".
void AppendReferences(std::wstring& text, const CReportResultDetail& detail);

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_FORMULA_SUM_H_
