#include "platform/qt/qt_program.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"

int main(int argc, char** argv) {
  ostrel::QtProgram program(argc, argv);
  ostrel::LoadScanMain();
  program.Open(ostrel::ScanMain);
  return program.Run();
}
