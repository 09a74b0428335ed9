// Compiles the public header with nothing before it.
#include "brindle.h"
