#include "cutting/base64.h"

namespace brindle {

namespace {
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

wchar_t Symbol(unsigned int sextet) {
  return static_cast<wchar_t>(kAlphabet[sextet & 63u]);
}
}  // namespace

std::wstring EncodeBase64(const unsigned char* bytes, std::size_t count) {
  std::wstring text;
  text.reserve((count + 2) / 3 * 4);
  for (std::size_t i = 0; i < count; i += 3) {
    const unsigned int b0 = bytes[i];
    text.push_back(Symbol(b0 >> 2));
    if (i + 1 == count) {
      text.push_back(Symbol((b0 & 3u) << 4));
      text.append(L"==");
      break;
    }
    const unsigned int b1 = bytes[i + 1];
    text.push_back(Symbol(((b0 & 3u) << 4) + (b1 >> 4)));
    if (i + 2 == count) {
      text.push_back(Symbol((b1 & 15u) << 2));
      text.push_back(L'=');
      break;
    }
    const unsigned int b2 = bytes[i + 2];
    text.push_back(Symbol(((b1 & 15u) << 2) + (b2 >> 6)));
    text.push_back(Symbol(b2 & 63u));
  }
  return text;
}

}  // namespace brindle
