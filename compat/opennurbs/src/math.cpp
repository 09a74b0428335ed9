#include "opennurbs.h"

bool ON_IsValid(double x) {
  return ON_IS_VALID(x);
}

// When a NaN is involved neither comparison holds and the other argument is returned, so a
// single NaN never wins.
double ON_Min(double a, double b) {
  if (a <= b) return a;
  if (b < a) return b;
  return (b == b) ? b : a;
}

float ON_Min(float a, float b) {
  if (a <= b) return a;
  if (b < a) return b;
  return (b == b) ? b : a;
}

int ON_Min(int a, int b) {
  return a <= b ? a : b;
}

double ON_Max(double a, double b) {
  if (a >= b) return a;
  if (b > a) return b;
  return (b == b) ? b : a;
}

float ON_Max(float a, float b) {
  if (a >= b) return a;
  if (b > a) return b;
  return (b == b) ? b : a;
}

int ON_Max(int a, int b) {
  return a >= b ? a : b;
}
