#include "opennurbs.h"

namespace {

unsigned char ClampByte(int value) {
  return static_cast<unsigned char>(value < 0 ? 0 : (value > 255 ? 255 : value));
}

}  // namespace

const ON_Color ON_Color::UnsetColor(0xFFFFFFFFU);
const ON_Color ON_Color::Black(0, 0, 0);
const ON_Color ON_Color::White(255, 255, 255);

ON_Color::ON_Color(unsigned int colorref) : m_color(colorref) {}

ON_Color::ON_Color(int red, int green, int blue) {
  SetRGB(red, green, blue);
}

ON_Color::ON_Color(int red, int green, int blue, int alpha) {
  SetRGBA(red, green, blue, alpha);
}

ON_Color::operator unsigned int() const {
  return m_color;
}

int ON_Color::Compare(const ON_Color& other) const {
  if (m_color < other.m_color) return -1;
  if (m_color > other.m_color) return 1;
  return 0;
}

bool ON_Color::IsUnset() const {
  return m_color == UnsetColor.m_color;
}

int ON_Color::Red() const {
  return m_RGBA[kRedByteIndex];
}
int ON_Color::Green() const {
  return m_RGBA[kGreenByteIndex];
}
int ON_Color::Blue() const {
  return m_RGBA[kBlueByteIndex];
}
int ON_Color::Alpha() const {
  return m_RGBA[kAlphaByteIndex];
}

double ON_Color::FractionRed() const {
  return Red() / 255.0;
}
double ON_Color::FractionGreen() const {
  return Green() / 255.0;
}
double ON_Color::FractionBlue() const {
  return Blue() / 255.0;
}
double ON_Color::FractionAlpha() const {
  return Alpha() / 255.0;
}

void ON_Color::SetRGB(int red, int green, int blue) {
  SetRGBA(red, green, blue, 0);
}

void ON_Color::SetRGBA(int red, int green, int blue, int alpha) {
  m_RGBA[kRedByteIndex] = ClampByte(red);
  m_RGBA[kGreenByteIndex] = ClampByte(green);
  m_RGBA[kBlueByteIndex] = ClampByte(blue);
  m_RGBA[kAlphaByteIndex] = ClampByte(alpha);
}

void ON_Color::SetAlpha(int alpha) {
  m_RGBA[kAlphaByteIndex] = ClampByte(alpha);
}
