#pragma once

// The two layouts of the form. In the time clock layout a line is an event at a time of day and hours
// are worked out later; in the plain layout hours are typed. Every box stands above its column in
// both.

namespace ostrel {

/// Changes to the other layout: inverts the menu's check, lays out form, menus and grid, and refills
/// the boxes.
void mnuUseTimeClock_Click();

}  // namespace ostrel
