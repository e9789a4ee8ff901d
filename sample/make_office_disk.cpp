// Makes the office's side of a sample client from CSV files: the five dBase tables, and the zip on
// the removable disk that holds them.
//
//   make_office_disk <csv folder> <client> <tables folder> [<disk folder>]
//
// A CSV file, UTF-8, is named after its table's word. Its first line has a column for each field,
// such as EMPL_NUMB:N5, SORT_NAME:C15, YTD_GROSS:N10.2: name, type, width, decimals. No value holds
// a comma.

#include <shapefil.h>
#include <zip.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/files/text_encoding.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kWords[] = {"Hvcl", "Prms", "Glen", "Glod", "Gleq"};
constexpr const char* kCodePage1252 = "LDID/3";

struct Column {
  std::string Name;
  char Type = 'C';
  int Width = 0;
  int Decimals = 0;
};

struct TableCloser {
  void operator()(DBFInfo* table) const { DBFClose(table); }
};
using TableHandle = std::unique_ptr<DBFInfo, TableCloser>;

void Require(bool holds, const std::string& complaint) {
  if (!holds) throw std::runtime_error(complaint);
}

std::vector<std::string> CellsOf(const std::string& line) {
  std::vector<std::string> cells(1);
  for (const char letter : line) {
    if (letter == ',') {
      cells.emplace_back();
    } else {
      cells.back() += letter;
    }
  }
  return cells;
}

Column ReadColumn(const std::string& cell) {
  const std::size_t colon = cell.find(':');
  Require(colon != std::string::npos && colon + 2 < cell.size(), "no field: " + cell);
  const std::size_t point = cell.find('.', colon);
  Column column{cell.substr(0, colon), cell[colon + 1], std::stoi(cell.substr(colon + 2)), 0};
  if (point != std::string::npos) column.Decimals = std::stoi(cell.substr(point + 1));
  return column;
}

void WriteRow(DBFHandle table, int row, const std::vector<Column>& columns,
              const std::vector<std::string>& cells) {
  Require(cells.size() == columns.size(), "row " + std::to_string(row + 1) + " is not complete");
  for (int field = 0; field < static_cast<int>(columns.size()); ++field) {
    const Column& column = columns[static_cast<std::size_t>(field)];
    std::string cell = ostrel::ToCodePage1252(cells[static_cast<std::size_t>(field)]);
    const auto width = static_cast<std::size_t>(column.Width);
    Require(cell.size() <= width, cell + " is too long for " + column.Name);
    if (column.Type == 'N') cell.insert(0, width - cell.size(), ' ');
    DBFWriteAttributeDirectly(table, row, field, cell.data());
  }
}

void MakeTable(const fs::path& csv, const fs::path& dbf) {
  std::ifstream lines(csv);
  std::string line;
  Require(static_cast<bool>(std::getline(lines, line)), csv.string() + " cannot be read");
  const TableHandle table(DBFCreateEx(dbf.string().c_str(), kCodePage1252));
  Require(table != nullptr, dbf.string() + " cannot be written");
  std::vector<Column> columns;
  for (const std::string& cell : CellsOf(line)) {
    const Column& column = columns.emplace_back(ReadColumn(cell));
    DBFAddNativeFieldType(table.get(), column.Name.c_str(), column.Type, column.Width,
                          column.Decimals);
  }
  for (int row = 0; std::getline(lines, line); ++row) {
    WriteRow(table.get(), row, columns, CellsOf(line));
  }
}

void MakeZip(const fs::path& zip, const std::vector<fs::path>& tables) {
  int error = 0;
  zip_t* const archive = zip_open(zip.string().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  Require(archive != nullptr, zip.string() + " cannot be written");
  bool complete = true;
  for (const fs::path& table : tables) {
    zip_source_t* const source = zip_source_file(archive, table.string().c_str(), 0, -1);
    complete &= zip_file_add(archive, table.filename().string().c_str(), source, 0) >= 0;
  }
  complete &= zip_close(archive) == 0;
  Require(complete, zip.string() + " is not complete");
}

void MakeOfficeDisk(const fs::path& csvFolder, const std::string& client,
                    const fs::path& tablesFolder, const char* diskFolder) {
  fs::create_directories(tablesFolder);
  std::vector<fs::path> tables;
  for (const char* word : kWords) {
    tables.push_back(tablesFolder / (word + client + ".dbf"));
    MakeTable(csvFolder / (std::string(word) + ".csv"), tables.back());
  }
  if (diskFolder == nullptr) return;
  fs::create_directories(diskFolder);
  MakeZip(fs::path(diskFolder) / ("Clnt" + client + ".zip"), tables);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4 && count != 5) {
    std::fputs("make_office_disk <csv folder> <client> <tables folder> [<disk folder>]\n", stderr);
    return EXIT_FAILURE;
  }
  try {
    MakeOfficeDisk(arguments[1], arguments[2], arguments[3], count == 5 ? arguments[4] : nullptr);
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "make_office_disk: %s\n", failure.what());
    return EXIT_FAILURE;
  }
}
