// Isotropic element quality of MMG3D and MMGS, evaluated in MMG's operation order so that the
// values agree with MMG to the last digit.
#ifndef BRINDLE_COMPAT_MMG_QUALITY_H
#define BRINDLE_COMPAT_MMG_QUALITY_H

namespace mmgcompat {

// 12*sqrt(3) and 2*sqrt(3), written with MMG's 15 significant digits.
constexpr double kTetQualityScale = 20.7846096908265;
constexpr double kTriQualityScale = 3.464101615137755;
// Below this, volumes, areas and edge-length sums count as zero.
constexpr double kNullMeasure = 1e-200;

// 6V / (sum of squared edge lengths)^(3/2) for the ordered tetrahedron (a, b, c, d); 0 when
// the signed volume or the length sum is below kNullMeasure (flat or inverted).
double UnscaledTetQuality(const double* a, const double* b, const double* c, const double* d);

// |AB x AC| / (sum of squared edge lengths); 0 for a degenerate triangle. Unsigned.
double UnscaledTriQuality(const double* a, const double* b, const double* c);

// Signed 6V = (b - a) . ((c - a) x (d - a)).
double SixVolume(const double* a, const double* b, const double* c, const double* d);

}  // namespace mmgcompat

#endif
