#include "exchange/exchange_disk.h"

#include <string>

#include "frame/app_state.h"
#include "platform/files/files.h"
#include "platform/files/removable_disk.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

/// Where the disk of a folder was last seen; of that folder alone.
struct Sighting {
  std::string Folder;
  std::string Disk;
};
Sighting LastSighting;

/// Without its disk a folder is part of the disk around it, whose own folder is further up.
bool HasLeft(const std::string& disk) {
  return LastSighting.Folder == RemoteDrive && disk.size() < LastSighting.Disk.size();
}

}  // namespace

void NoteExchangeDisk() { LastSighting = {RemoteDrive, DiskHolding(RemoteDrive)}; }

void RequireExchangeDisk() {
  const std::string disk = DiskHolding(RemoteDrive);
  if (!RemoteDrive.ends_with(kPathSeparator) || HasLeft(disk)) {
    throw Failure(failure_number::kDiskNotReady, "Disk not ready: " + RemoteDrive);
  }
  LastSighting = {RemoteDrive, disk};
}

}  // namespace ostrel
