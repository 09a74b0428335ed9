#ifndef BRINDLE_COMPAT_OPENNURBS_COLOR_H
#define BRINDLE_COMPAT_OPENNURBS_COLOR_H

#include "opennurbs_defines.h"

// A packed 32-bit colour. Bytes in memory are R, G, B, A; the fourth byte is transparency
// (0 = opaque, 255 = fully transparent).
class ON_CLASS ON_Color {
 public:
  ON_Color() = default;
  ON_Color(unsigned int colorref);
  ON_Color(int red, int green, int blue);
  ON_Color(int red, int green, int blue, int alpha);

  static const ON_Color UnsetColor;
  static const ON_Color Black;
  static const ON_Color White;

  enum RGBA_byte_index : unsigned int {
    kRedByteIndex = 0,
    kGreenByteIndex = 1,
    kBlueByteIndex = 2,
    kAlphaByteIndex = 3
  };

  operator unsigned int() const;
  int Compare(const ON_Color& other) const;
  bool IsUnset() const;

  int Red() const;
  int Green() const;
  int Blue() const;
  int Alpha() const;
  double FractionRed() const;
  double FractionGreen() const;
  double FractionBlue() const;
  double FractionAlpha() const;

  void SetRGB(int red, int green, int blue);
  void SetRGBA(int red, int green, int blue, int alpha);
  void SetAlpha(int alpha);

 private:
  union {
    unsigned int m_color = 0;
    unsigned char m_RGBA[4];
  };
};

#endif
