// Sanitizer settings built into every harness, so that a reproducer behaves the same however
// the harness is started. A single allocation above 64 MiB fails (malloc and realloc return
// null, operator new aborts): the harnesses' inputs never justify that much, so the library
// must either check such a failure or not ask for that much in the first place.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1:max_allocation_size_mb=64:detect_leaks=1";
}

extern "C" const char* __ubsan_default_options() {
  return "print_stacktrace=1:halt_on_error=1";
}
