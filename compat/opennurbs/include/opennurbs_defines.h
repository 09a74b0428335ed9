#ifndef BRINDLE_COMPAT_OPENNURBS_DEFINES_H
#define BRINDLE_COMPAT_OPENNURBS_DEFINES_H

// Constants, scalar helpers and memory functions shared by every openNURBS type.

#include <cfloat>
#include <cstddef>
#include <cstdint>

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
void* onmalloc(size_t sz);
void* oncalloc(size_t num, size_t sz);
void onfree(void* memblock);
void* onrealloc(void* memblock, size_t sz);
}

bool ON_IsValid(double x);

// Deliberately plain overloads: mixed argument types must stay ambiguous.
double ON_Min(double a, double b);
float ON_Min(float a, float b);
int ON_Min(int a, int b);
double ON_Max(double a, double b);
float ON_Max(float a, float b);
int ON_Max(int a, int b);

#endif
