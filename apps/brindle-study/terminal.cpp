#include "terminal.h"

#include <fcntl.h>

#include <cstdio>
#include <filesystem>

#if defined(_WIN32)
#include <io.h>
#include <sys/stat.h>
#define BRINDLE_DUP _dup
#define BRINDLE_DUP2 _dup2
#define BRINDLE_CLOSE _close
#define BRINDLE_FILENO _fileno
#else
#include <unistd.h>
#define BRINDLE_DUP dup
#define BRINDLE_DUP2 dup2
#define BRINDLE_CLOSE close
#define BRINDLE_FILENO fileno
#endif

#ifndef BRINDLE_STUDY_VERSION
#define BRINDLE_STUDY_VERSION "unknown"
#endif

namespace brindle::study {
namespace {

int OpenForAppend(const std::string& path) {
#if defined(_WIN32)
  return _open(path.c_str(), _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY, _S_IREAD | _S_IWRITE);
#else
  return open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
#endif
}

}  // namespace

LibraryOutputToLog::LibraryOutputToLog(const std::string& logPath) {
  const int log = OpenForAppend(logPath);
  if (log < 0) return;
  std::fflush(stdout);  // what the tool printed so far belongs to the terminal
  const int out = BRINDLE_FILENO(stdout);
  saved_ = BRINDLE_DUP(out);
  if (saved_ >= 0 && BRINDLE_DUP2(log, out) < 0) {
    BRINDLE_CLOSE(saved_);
    saved_ = -1;
  }
  BRINDLE_CLOSE(log);
}

LibraryOutputToLog::~LibraryOutputToLog() {
  if (saved_ < 0) return;
  std::fflush(stdout);  // the library's last lines belong to the log
  BRINDLE_DUP2(saved_, BRINDLE_FILENO(stdout));
  BRINDLE_CLOSE(saved_);
}

std::string ShellQuote(const std::string& word) {
  if (word.empty()) return "''";
  bool plain = true;
  for (char c : word) {
    const bool safe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      std::string("_-+=./:,@%").find(c) != std::string::npos;
    plain = plain && safe;
  }
  if (plain) return word;
  std::string quoted = "'";
  for (char c : word)
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string ShellCommand(const std::vector<std::string>& words) {
  std::string command;
  for (const std::string& word : words)
    command += (command.empty() ? "" : " ") + ShellQuote(word);
  return command;
}

std::string ProgramPath(const std::string& argv0) {
  if (argv0.find_first_of("/\\") == std::string::npos) return argv0;
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(argv0, error);
  return error ? argv0 : absolute.lexically_normal().string();
}

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

const char* StudyVersion() {
  return BRINDLE_STUDY_VERSION;
}

}  // namespace brindle::study
