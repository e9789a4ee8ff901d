#include "frame/app_state.h"

#include "platform/files/files.h"
#include "platform/files/user_folders.h"

namespace ostrel {

std::string DataPath, RemoteDrive, ClientNumb;
std::int32_t UserCount = 1;
std::string DefaultClockIn, DefaultClockOut;
Database &PrinDb = *new Database, &DescDb = *new Database;
bool PrinDbOpen = false, DescDbOpen = false;
Recordset& LinesRs = *new Recordset;
Recordset &ClientRs = *new Recordset, &PrmsRs = *new Recordset, &GlenRs = *new Recordset,
          &GlodRs = *new Recordset, &GleqRs = *new Recordset;
bool JobStepAborted = false;

std::string StorePath() { return DataPath + kPathSeparator + "Prin" + ClientNumb + ".mdb"; }

std::string LogPath() { return ApplicationFolder() + kPathSeparator + "Errors.Log"; }

std::string PrintedFolder() { return DataPath + kPathSeparator + "Printed"; }

void ResetAppState() {
  for (std::string* text :
       {&DataPath, &RemoteDrive, &ClientNumb, &DefaultClockIn, &DefaultClockOut}) {
    text->clear();
  }
  for (Recordset* recordset : {&LinesRs, &ClientRs, &PrmsRs, &GlenRs, &GlodRs, &GleqRs})
    *recordset = {};
  PrinDb = {};
  DescDb = {};
  PrinDbOpen = DescDbOpen = JobStepAborted = false;
  UserCount = 1;
}

}  // namespace ostrel
