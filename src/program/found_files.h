#pragma once

// What a start finds in the program's folder besides what it opens: files of runs that were killed,
// tables that somebody copied in, files from before that anybody may read. Start-up puts it in order
// once the client is known, before the tables and the store are opened.

namespace ostrel {

/// Removes what killed runs left here, beside the settings and on the office's disk; takes the pay of
/// the year out of the tables; hides from others what has anybody's pay in it. Which table it stays in
/// is reported.
void TidyFoundFiles();

}  // namespace ostrel
