// Scratch folders and file reading shared by the study tool's tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace brindle::study {

// An empty folder of the given name in the system's temporary folder.
inline std::filesystem::path ScratchFolder(const std::string& name) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  return folder;
}

// The whole file, read in text mode as the tool writes it, so that lines end in '\n' on every
// platform; it is closed again before the caller removes its folder (Windows).
inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace brindle::study
