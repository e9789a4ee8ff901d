#pragma once

// The event table: which routine answers which event of the form. Whoever looks for what happens on
// a key, a click or a menu command begins here.

namespace ostrel {

/// The form in its design state with every event tied to its routine. Nothing is loaded yet: that is
/// the form's Load event.
void LoadScanMain();

}  // namespace ostrel
