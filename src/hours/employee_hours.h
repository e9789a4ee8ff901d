#pragma once

// Employee hours: the payroll calculation. For the day of the date box it pairs each employee's
// clock events into periods, works out their hours, spreads these over the period's piecework in
// proportion to gross, and rewrites HOURS, GROSS and HOUR_GROSS of the lines. It runs for the minimum
// wage watch and for the import file, never when a line is saved.

namespace ostrel {

/// Rewrites the day's lines in one durable commit; the lines are as before, and JobStepAborted is
/// true, when the date box holds no day or nobody has clocked in on it. LinesRs stays bound to the
/// last employee's lines. Run again on unchanged lines at the same time it writes the same values.
void CalcEmplHours();

}  // namespace ostrel
