// The surface test program replaces the openNURBS allocator functions the same way as the
// mesh-tool tests, to make the solver's array reservations fail.
#include "meshtools/buffer_limit_support.cpp"  // NOLINT(bugprone-suspicious-include)
