// Keeps the host's signal handlers across a call into MMG. MMG's level-set drivers install
// their own handlers for six signals and reset them to the default action when they return,
// which inside a host process would silently drop the host's crash and interrupt handling.
#ifndef BRINDLE_CUTTING_SIGNAL_GUARD_H
#define BRINDLE_CUTTING_SIGNAL_GUARD_H

#include <csignal>

#if !defined(_WIN32)
#include <signal.h>
#endif

namespace brindle {

// Saves the handlers of SIGABRT, SIGFPE, SIGILL, SIGSEGV, SIGTERM and SIGINT on construction
// and reinstates them on destruction.
class SignalHandlerGuard {
 public:
  SignalHandlerGuard();
  ~SignalHandlerGuard();
  SignalHandlerGuard(const SignalHandlerGuard&) = delete;
  SignalHandlerGuard& operator=(const SignalHandlerGuard&) = delete;

  static constexpr int kSignalCount = 6;
  static const int kSignals[kSignalCount];

 private:
#if defined(_WIN32)
  using Handler = void (*)(int);
  Handler saved_[kSignalCount];
#else
  struct sigaction saved_[kSignalCount];
#endif
};

}  // namespace brindle

#endif
