#ifndef BRINDLE_COMPAT_OPENNURBS_DEFINES_H
#define BRINDLE_COMPAT_OPENNURBS_DEFINES_H

// Constants, scalar helpers and memory functions shared by every openNURBS type.

#include <cfloat>
#include <cstddef>
#include <cstdint>

// Linkage of the library's classes, functions and globals. The library itself is compiled with
// OPENNURBS_EXPORTS and its users with OPENNURBS_IMPORTS, so one copy of every type's code and
// data lives in the shared library and is used by every module of the process.
#if defined(OPENNURBS_EXPORTS) && defined(OPENNURBS_IMPORTS)
#error At most one of OPENNURBS_EXPORTS or OPENNURBS_IMPORTS can be defined.
#endif
#if defined(_WIN32) && defined(OPENNURBS_EXPORTS)
#define ON_CLASS __declspec(dllexport)
#define ON_DECL __declspec(dllexport)
#define ON_EXTERN_DECL __declspec(dllexport)
#elif defined(_WIN32) && defined(OPENNURBS_IMPORTS)
#define ON_CLASS __declspec(dllimport)
#define ON_DECL __declspec(dllimport)
#define ON_EXTERN_DECL __declspec(dllimport)
#elif defined(OPENNURBS_EXPORTS) || defined(OPENNURBS_IMPORTS)
#define ON_CLASS __attribute__((visibility("default")))
#define ON_DECL __attribute__((visibility("default")))
#define ON_EXTERN_DECL __attribute__((visibility("default")))
#else
#define ON_CLASS
#define ON_DECL
#define ON_EXTERN_DECL
#endif

#define ON__INT64 int64_t
#define ON__UINT64 uint64_t

// Sentinel values meaning "not set"; anything at or beyond them is treated as invalid.
#define ON_UNSET_POSITIVE_VALUE 1.23432101234321e+308
#define ON_UNSET_VALUE -1.23432101234321e+308
#define ON_UNSET_POSITIVE_FLOAT 1.234321e+38f
#define ON_UNSET_FLOAT -1.234321e+38f
#define ON_UNSET_UINT_INDEX 0xFFFFFFFFU

#define ON_ZERO_TOLERANCE 2.3283064365386962890625e-10
#define ON_RELATIVE_TOLERANCE 2.27373675443232059478759765625e-13
#define ON_EPSILON DBL_EPSILON
#define ON_SQRT_EPSILON 1.490116119385000000e-8
#define ON_FLOAT_EPSILON FLT_EPSILON
#define ON_DBL_MIN DBL_MIN
#define ON_DBL_MAX DBL_MAX
#define ON_FLT_MAX FLT_MAX

// NaN fails both comparisons, so it is invalid as well.
#define ON_IS_VALID(x) ((x) > ON_UNSET_VALUE && (x) < ON_UNSET_POSITIVE_VALUE)
#define ON_IS_VALID_FLOAT(x) ((x) > ON_UNSET_FLOAT && (x) < ON_UNSET_POSITIVE_FLOAT)

extern "C" {
ON_DECL void* onmalloc(size_t sz);
ON_DECL void* oncalloc(size_t num, size_t sz);
ON_DECL void onfree(void* memblock);
ON_DECL void* onrealloc(void* memblock, size_t sz);
}

ON_DECL bool ON_IsValid(double x);

// Deliberately plain overloads: mixed argument types must stay ambiguous.
ON_DECL double ON_Min(double a, double b);
ON_DECL float ON_Min(float a, float b);
ON_DECL int ON_Min(int a, int b);
ON_DECL double ON_Max(double a, double b);
ON_DECL float ON_Max(float a, float b);
ON_DECL int ON_Max(int a, int b);

#endif
