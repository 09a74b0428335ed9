#include "cutting/signal_guard.h"

namespace brindle {

const int SignalHandlerGuard::kSignals[kSignalCount] = {SIGABRT, SIGFPE,  SIGILL,
                                                        SIGSEGV, SIGTERM, SIGINT};

#if defined(_WIN32)

SignalHandlerGuard::SignalHandlerGuard() {
  // The C runtime can only report a handler by replacing it, so put each one straight back.
  for (int i = 0; i < kSignalCount; ++i) {
    saved_[i] = std::signal(kSignals[i], SIG_DFL);
    std::signal(kSignals[i], saved_[i]);
  }
}

SignalHandlerGuard::~SignalHandlerGuard() {
  for (int i = 0; i < kSignalCount; ++i)
    std::signal(kSignals[i], saved_[i]);
}

#else

SignalHandlerGuard::SignalHandlerGuard() {
  for (int i = 0; i < kSignalCount; ++i)
    sigaction(kSignals[i], nullptr, &saved_[i]);
}

SignalHandlerGuard::~SignalHandlerGuard() {
  for (int i = 0; i < kSignalCount; ++i)
    sigaction(kSignals[i], &saved_[i], nullptr);
}

#endif

}  // namespace brindle
