// file_names: names of files and what stands behind them, for names of any bytes.

#pragma once

#include <functional>
#include <string>
#include <vector>

bool fileExists(const std::string& file);
bool isFolder(const std::string& file);
bool isOrdinaryFile(const std::string& file);

// Of "a/b.c.png": "b.c.png", "b.c", "png" in small letters.
std::string lastName(const std::string& file);
std::string bareName(const std::string& file);
std::string extensionOf(const std::string& file);

// The marks that stand for a picture's bare name and its folder in the names of what belongs to it.
// Standard input is called stdin there, in the folder where the program runs.
constexpr char kNameMark[] = "{name}";
constexpr char kFolderMark[] = "{folder}";
bool hasMark(const std::string& pattern);
std::string withName(const std::string& pattern, const std::string& file);

// "a.png", "a-2.png", "a-3.png": the first that is not taken.
std::string freeName(const std::string& wanted,
                     const std::function<bool(const std::string&)>& isTaken);

// From the root on, with "." and ".." resolved as far as names alone tell.
std::string wholePath(const std::string& file);

// The folder of a path as it is written; "." of a name alone.
std::string folderOf(const std::string& file);

// The same for every way to write the path of a file, also of one that does not exist yet.
std::string placeOf(const std::string& file);

// The files of a folder whose names end so, by name without regard to capitals; whole paths behind
// the folder as it was given.
std::vector<std::string> filesIn(const std::string& folder, const std::string& ending);

// Where the running program is.
std::string programFolder();

// A folder of its own for a run, gone with it.
struct TemporaryFolder {
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path;  // empty: it could not be made
};

// Its path; ends the command when there is none.
const std::string& pathOf(const TemporaryFolder& folder);
