// A day on a disk that loses its power: everything that was written and flushed is recorded, then
// the disk is put together as it may be found afterwards. What had not been flushed may be there,
// not there, or in part, sector by sector and in any order; folders keep the order of their changes,
// as journaling file systems do.

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "battery/battery.h"
#include "battery/disk_shim.h"
#include "battery/working_day.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSector = 512;

struct Change {
  DiskOp What;
  std::string Path, To, Bytes;
  std::size_t At = 0;
  int File = 0;  // number of a new one
};

using Names = std::map<std::string, int>;  // numbers of files; folders end in /

void Apply(Names& names, const Change& change) {
  switch (change.What) {
    case DiskOp::Create:
      names[change.Path] = change.File;
      return;
    case DiskOp::NewFolder:
      names[change.Path + "/"] = 0;
      return;
    case DiskOp::Remove:
      names.erase(change.Path);
      names.erase(change.Path + "/");
      return;
    default:  // renamed: a file, or a folder with all that is in it
      names.erase(change.To);
      Names now;
      for (const auto& [name, file] : names) {
        const bool moves = name == change.Path || name.starts_with(change.Path + "/");
        now[moves ? change.To + name.substr(change.Path.size()) : name] = file;
      }
      names = std::move(now);
  }
}

void Apply(std::string& content, const Change& change) {
  if (change.What == DiskOp::Cut) return content.resize(change.At);
  content.resize(std::max(content.size(), change.At + change.Bytes.size()));
  content.replace(change.At, change.Bytes.size(), change.Bytes);
}

class Disk {
 public:
  explicit Disk(const Contents& morning) {
    for (const auto& [name, content] : morning) {
      const int number = -1 - static_cast<int>(safe_.size());
      safe_[name] = number;
      files_[number].Flushed = content;
    }
    now_ = safe_;
  }

  void Take(const Change& change, bool flushes) {
    const auto file = now_.find(change.Path);
    switch (change.What) {
      case DiskOp::Write:
      case DiskOp::Cut:
        if (file != now_.end()) files_[file->second].Pending.push_back(&change);
        return;
      case DiskOp::Flush:
        if (flushes && file != now_.end()) Flush(files_[file->second]);
        return;
      case DiskOp::FlushFolder:
        if (flushes) FlushFolder(change.Path);
        return;
      default:
        Apply(now_, change);
        pending_.push_back(&change);
    }
  }

  /// One of the many states in which the disk may be found if the power goes now.
  Contents AfterCut(Harm& random) const {
    const std::size_t mood =
        random.Below(4);  // 0 all has arrived, 1 only the flushed, else anything
    std::size_t arrived = mood == 0 ? pending_.size() : 0;
    if (mood > 1) arrived = random.Below(pending_.size() + 1);
    Names names = safe_;
    for (std::size_t i = 0; i < arrived; ++i) Apply(names, *pending_[i]);
    Contents found;
    for (const auto& [name, number] : names) {
      const auto file = files_.find(number);
      found[name] = file == files_.end() ? "" : ContentOf(file->second, mood, random);
    }
    return found;
  }

 private:
  struct File {
    std::string Flushed;
    std::vector<const Change*> Pending;
  };

  static void Flush(File& file) {
    for (const Change* change : file.Pending) Apply(file.Flushed, *change);
    file.Pending.clear();
  }

  // With the folder's last change all that came before it is safe.
  void FlushFolder(const fs::path& folder) {
    const auto last = std::find_if(pending_.rbegin(), pending_.rend(), [&](const Change* change) {
                        return fs::path(change->Path).parent_path() == folder ||
                               fs::path(change->To).parent_path() == folder;
                      }).base();
    for (auto change = pending_.begin(); change != last; ++change) Apply(safe_, **change);
    pending_.erase(pending_.begin(), last);
  }

  static std::string ContentOf(const File& file, std::size_t mood, Harm& random) {
    std::string content = file.Flushed;
    for (const Change* change : file.Pending) {
      const std::size_t luck = mood > 1 ? random.Below(3) : mood;
      if (luck == 0) Apply(content, *change);
      if (luck == 2) Tear(content, *change, random);
    }
    return content;
  }

  static void Tear(std::string& content, const Change& change, Harm& random) {
    for (std::size_t at = 0, count = 0; at < change.Bytes.size(); at += count) {
      count = std::min(kSector - (change.At + at) % kSector, change.Bytes.size() - at);
      const Change sector{change.What, "", "", change.Bytes.substr(at, count), change.At + at};
      if (random.Coin()) Apply(content, sector);
    }
  }

  Names safe_, now_;
  std::map<int, File> files_;
  std::vector<const Change*> pending_;  // of folders, behind what is safe
};

TEST(PowerCut, LosesNothingThatWasSaidToBeWritten) {
  WorkingDay day;
  const DayRecord undisturbed(day);
  const std::string folder = day.Laptop.Folder.Path();
  day.Reset();
  const Contents morning = ReadContents(folder);
  std::vector<std::size_t> acknowledged;  // by which change
  std::vector<Change> changes;
  const auto record = [&](const DiskCall& call) {
    const auto name = [&](const std::string& path) {
      return path.empty() ? "" : fs::path(path).lexically_relative(folder).string();
    };
    if (call.What == DiskOp::Open || call.What == DiskOp::Read) return;
    changes.push_back({call.What, name(call.Path), name(call.To), std::string(call.Bytes),
                       static_cast<std::size_t>(call.At), static_cast<int>(changes.size())});
  };
  {
    DiskWatcher watcher(folder);
    watcher.After = record;
    day.Run([&] { acknowledged.push_back(changes.size()); });
  }
  const int runs = Runs(5000, 300);
  Row row("Power cut", "disk states damaged where nothing is flushed");
  row["changes"] = std::ssize(changes);
  row["disk states"] = runs;
  for (const bool flushes : {true, false}) {
    Harm random;
    for (int run = 0; run < (flushes ? runs : runs / 10); ++run) {
      const std::size_t moment = random.Below(changes.size() + 1);
      Disk disk(morning);
      for (std::size_t i = 0; i < moment; ++i) disk.Take(changes[i], flushes);
      const auto heard = std::upper_bound(acknowledged.begin(), acknowledged.end(), moment);
      day.Reset(disk.AfterCut(random));
      const std::string damage =
          undisturbed.DamageAfter(day, static_cast<std::size_t>(heard - acknowledged.begin()));
      EXPECT_TRUE(!flushes || damage.empty()) << run << ", at " << moment << ": " << damage;
      if (!flushes && !damage.empty()) ++row.Control;
    }
  }
}

}  // namespace
}  // namespace ostrel
