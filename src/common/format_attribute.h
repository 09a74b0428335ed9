#ifndef BRINDLE_COMMON_FORMAT_ATTRIBUTE_H
#define BRINDLE_COMMON_FORMAT_ATTRIBUTE_H

// Lets GCC and Clang check printf-style arguments; expands to nothing elsewhere.
#if defined(__GNUC__)
#define BRINDLE_PRINTF_FORMAT(format_index, first_arg) \
  __attribute__((format(printf, format_index, first_arg)))
#else
#define BRINDLE_PRINTF_FORMAT(format_index, first_arg)
#endif

#endif
