// Progress and failure traces. The host captures the process's standard streams, so every
// trace is flushed at once to keep it in order with the host's own output.
#ifndef BRINDLE_COMMON_TRACE_H
#define BRINDLE_COMMON_TRACE_H

#include "common/format_attribute.h"

namespace brindle {

// printf-style trace to standard output, flushed.
void TraceOut(const char* format, ...) BRINDLE_PRINTF_FORMAT(1, 2);

// printf-style trace to standard error, flushed.
void TraceErr(const char* format, ...) BRINDLE_PRINTF_FORMAT(1, 2);

}  // namespace brindle

#endif
