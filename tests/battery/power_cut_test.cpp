// A day on a disk that loses its power: everything that was written and flushed is recorded, then
// the disk is put together as it may be found afterwards. What had not been flushed may be there,
// not there, or in part, sector by sector and in any order; folders keep the order of their changes,
// as journaling file systems do.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <random>
#include <vector>

#include "battery/battery.h"
#include "battery/disk_shim.h"
#include "battery/working_day.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSector = 512;

struct Change {
  DiskCallKind What;
  std::string Path, To, Bytes;
  int File = 0;
  std::size_t At = 0;
};

class Recorder : public DiskWatcher {
 public:
  explicit Recorder(const std::string& folder) : DiskWatcher(folder), folder_(folder) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (entry.is_regular_file()) Morning[Name(entry.path())] = NumberOf(InodeOf(entry.path()));
    }
  }

  void After(const DiskCall& call) override {
    if (call.What == DiskCallKind::Open || call.What == DiskCallKind::Read) return;
    if (call.What == DiskCallKind::Create) files_.erase(call.Inode);  // numbers are used again
    const int file = call.Inode == 0 ? 0 : NumberOf(call.Inode);
    Changes.push_back({call.What, Name(call.Path), call.To.empty() ? "" : Name(call.To),
                       std::string(call.Bytes), file, static_cast<std::size_t>(call.At)});
  }

  std::vector<Change> Changes;
  std::map<std::string, int> Morning;  ///< the files' numbers by name

 private:
  static ino_t InodeOf(const fs::path& path) {
    struct stat state {};
    stat(path.c_str(), &state);
    return state.st_ino;
  }
  int NumberOf(ino_t inode) {
    const auto [file, fresh] = files_.try_emplace(inode, last_ + 1);
    if (fresh) ++last_;
    return file->second;
  }
  std::string Name(const std::string& path) const {
    return fs::path(path).lexically_relative(folder_).string();
  }

  std::string folder_;
  std::map<ino_t, int> files_;
  int last_ = 0;
};

void Apply(std::string& content, const Change& change) {
  if (change.What == DiskCallKind::Cut) return content.resize(change.At);
  if (content.size() < change.At + change.Bytes.size()) {
    content.resize(change.At + change.Bytes.size());
  }
  content.replace(change.At, change.Bytes.size(), change.Bytes);
}

class Disk {
 public:
  Disk(const Contents& morning, const std::map<std::string, int>& numbers) : names_(morning) {
    for (const auto& [name, number] : numbers) {
      files_[number].Flushed = morning.at(name);
      numbers_[name] = number;
    }
  }

  void Take(const Change& change, bool flushes) {
    switch (change.What) {
      case DiskCallKind::Write:
      case DiskCallKind::Cut:
        return files_[change.File].Pending.push_back(&change);
      case DiskCallKind::Flush:
        if (flushes) Flush(files_[change.File]);
        return;
      case DiskCallKind::FlushFolder:
        if (flushes) FlushFolder(change.Path);
        return;
      default:
        entries_.push_back(&change);
    }
  }

  /// One of the many states in which the disk may be found if the power goes now.
  Contents AfterCut(std::mt19937& random) const {
    const auto mood = random() % 4;  // 0 all has arrived, 1 only what was flushed, else anything
    std::size_t entries = entries_.size();
    if (mood == 1) entries = flushed_;
    if (mood > 1) entries = flushed_ + random() % (entries_.size() - flushed_ + 1);
    Names now{names_, numbers_};
    for (std::size_t i = 0; i < entries; ++i) now.Take(*entries_[i]);
    for (const auto& [name, number] : now.Numbers) {
      const auto file = files_.find(number);
      now.Found[name] = file == files_.end() ? "" : ContentOf(file->second, mood, random);
    }
    return now.Found;
  }

 private:
  struct File {
    std::string Flushed;
    std::vector<const Change*> Pending;
  };

  struct Names {
    Contents Found;
    std::map<std::string, int> Numbers;

    void Take(const Change& change) {
      switch (change.What) {
        case DiskCallKind::Create:
          Numbers[change.Path] = change.File;
          break;
        case DiskCallKind::MakeFolder:
          Found[change.Path + "/"] = "";
          break;
        case DiskCallKind::Remove:
          Numbers.erase(change.Path);
          Found.erase(change.Path);
          Found.erase(change.Path + "/");
          break;
        default:
          Move(Numbers, change);
          Move(Found, change);
      }
    }

    /// A file, or a folder with all that is in it.
    template <typename Map>
    static void Move(Map& names, const Change& change) {
      Map moved;
      for (auto entry = names.begin(); entry != names.end();) {
        const std::string& name = entry->first;
        if (name == change.Path || name.starts_with(change.Path + "/")) {
          moved[change.To + name.substr(change.Path.size())] = entry->second;
          entry = names.erase(entry);
        } else {
          ++entry;
        }
      }
      for (auto& [name, what] : moved) names[name] = what;
    }
  };

  static void Flush(File& file) {
    for (const Change* change : file.Pending) Apply(file.Flushed, *change);
    file.Pending.clear();
  }

  void FlushFolder(const std::string& folder) {
    const auto isIn = [&](const std::string& name) {
      return !name.empty() && fs::path(name).parent_path() == fs::path(folder);
    };
    for (std::size_t i = entries_.size(); i > flushed_; --i) {
      if (!isIn(entries_[i - 1]->Path) && !isIn(entries_[i - 1]->To)) continue;
      flushed_ = i;
      return;
    }
  }

  static std::string ContentOf(const File& file, std::uint_fast32_t mood, std::mt19937& random) {
    std::string content = file.Flushed;
    for (const Change* change : file.Pending) {
      const auto luck = mood == 0 ? 0 : mood == 1 ? 1 : random() % 3;
      if (luck == 0) Apply(content, *change);
      if (luck == 2) Tear(content, *change, random);
    }
    return content;
  }

  static void Tear(std::string& content, const Change& change, std::mt19937& random) {
    if (change.What == DiskCallKind::Cut) return;
    for (std::size_t at = 0; at < change.Bytes.size();) {
      const std::size_t count =
          std::min(kSector - (change.At + at) % kSector, change.Bytes.size() - at);
      Change sector = change;
      sector.At += at;
      sector.Bytes = change.Bytes.substr(at, count);
      if (random() % 2 == 0) Apply(content, sector);
      at += count;
    }
  }

  Contents names_;
  std::map<std::string, int> numbers_;
  std::map<int, File> files_;
  std::vector<const Change*> entries_;  // of folders
  std::size_t flushed_ = 0;             // how many of them are safe
};

class PowerCut : public testing::Test {
 protected:
  PowerCut() : record(day) {
    day.Reset();
    morning = ReadContents(day.Laptop.Folder.Path());
    recorder = std::make_unique<Recorder>(day.Laptop.Folder.Path());
    day.Run([&] { acknowledged.push_back(recorder->Changes.size()); });
    changes = std::move(recorder->Changes);
    numbers = recorder->Morning;
    recorder.reset();
  }

  /// Cuts the power at a random moment, as often as asked.
  ///   returns  what was found damaged, a line each
  std::vector<std::string> Cut(int runs, bool flushes) {
    std::mt19937 random(kSeed);
    std::vector<std::string> damages;
    for (int run = 0; run < runs; ++run) {
      const std::size_t moment = random() % (changes.size() + 1);
      Disk disk(morning, numbers);
      for (std::size_t i = 0; i < moment; ++i) disk.Take(changes[i], flushes);
      std::size_t heard = 0;
      while (heard < acknowledged.size() && acknowledged[heard] <= moment) ++heard;
      day.Reset(disk.AfterCut(random));
      const std::string damage = record.DamageAfter(day, heard);
      if (!damage.empty()) damages.push_back("at " + std::to_string(moment) + ": " + damage);
    }
    return damages;
  }

  WorkingDay day;
  DayRecord record;
  std::unique_ptr<Recorder> recorder;
  std::vector<Change> changes;
  std::map<std::string, int> numbers;
  std::vector<std::size_t> acknowledged;
  Contents morning;
};

TEST_F(PowerCut, LosesNothingThatWasSaidToBeWritten) {
  const int runs = Runs(5000, 300);
  const std::vector<std::string> damages = Cut(runs, true);
  for (const std::string& damage : damages) ADD_FAILURE() << damage;
  const std::vector<std::string> control = Cut(runs / 10, false);
  EXPECT_FALSE(control.empty()) << "without flushing, nothing was lost either";
  Figure("Power cut", std::to_string(runs) + " disk states after " +
                          std::to_string(changes.size()) + " changes, seed " +
                          std::to_string(kSeed) + ": " + std::to_string(damages.size()) +
                          " damaged; control without flushing: " + std::to_string(control.size()) +
                          " of " + std::to_string(runs / 10));
}

}  // namespace
}  // namespace ostrel
