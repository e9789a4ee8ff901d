#include "platform/qt/qt_program.h"
#include "program/event_table.h"
#include "program/start_up.h"
#include "scan_main/scan_main.h"

int main(int argc, char** argv) {
  ostrel::QtProgram program(argc, argv);
  ostrel::LoadScanMain();
  program.Open(ostrel::ScanMain);
  const int code = program.Run();
  ostrel::CloseAll();
  return code;
}
