#ifndef BRINDLE_COMMON_FORMAT_ATTRIBUTE_H
#define BRINDLE_COMMON_FORMAT_ATTRIBUTE_H

// Lets GCC and Clang check printf-style arguments; expands to nothing elsewhere.
// MinGW's plain `printf` archetype is the old Microsoft runtime's, which rejects %zu and %lld;
// the library's formats go through the C99-conforming stdio that libstdc++ selects on MinGW,
// so they are checked as GNU formats there.
#if defined(__MINGW32__)
#define BRINDLE_PRINTF_FORMAT(format_index, first_arg) \
  __attribute__((format(gnu_printf, format_index, first_arg)))
#elif defined(__GNUC__)
#define BRINDLE_PRINTF_FORMAT(format_index, first_arg) \
  __attribute__((format(printf, format_index, first_arg)))
#else
#define BRINDLE_PRINTF_FORMAT(format_index, first_arg)
#endif

#endif
