// The C test as C++, beside the header of the C++ library.
#include "tests/c/test.c"

#include <fexora/fexora.h>
