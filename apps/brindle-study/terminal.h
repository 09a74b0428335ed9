// A clean terminal: the library's progress traces go to a log file while it runs, and the
// commands the tool prints can be pasted into a shell as they stand.
#ifndef BRINDLE_STUDY_TERMINAL_H
#define BRINDLE_STUDY_TERMINAL_H

#include <string>
#include <vector>

namespace brindle::study {

// While alive, whatever is written to the process's standard output (file descriptor 1, which
// the library's traces use) is appended to `logPath`; the terminal gets it back afterwards.
// When the log cannot be opened, output stays where it was.
class LibraryOutputToLog {
 public:
  explicit LibraryOutputToLog(const std::string& logPath);
  ~LibraryOutputToLog();
  LibraryOutputToLog(const LibraryOutputToLog&) = delete;
  LibraryOutputToLog& operator=(const LibraryOutputToLog&) = delete;

 private:
  int saved_ = -1;  // the original standard output while redirected
};

// One word for a POSIX shell: unchanged when it needs no quoting, else in single quotes.
std::string ShellQuote(const std::string& word);

// The words quoted and joined by blanks.
std::string ShellCommand(const std::vector<std::string>& words);

// How to start the tool again from any folder: argv[0] made absolute when it names a path,
// unchanged when the shell found it on the PATH.
std::string ProgramPath(const std::string& argv0);

// The path made absolute (unchanged if that fails), for commands that work from any folder.
std::string AbsolutePath(const std::string& path);

// Version of the tool (the project's version).
const char* StudyVersion();

}  // namespace brindle::study

#endif
