#pragma once

// The minimum wage watch: whether the crew's piecework earns the minimum wage, asked during the day.

namespace ostrel {

/// Works the day's hours out anew and shows one box with the totals on show and the employees below
/// the minimum. Stores nothing of its own.
void mnuMinWageWatch_Click();

}  // namespace ostrel
