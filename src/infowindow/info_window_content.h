// What the information window says about the plug-in.
#ifndef BRINDLE_INFOWINDOW_INFO_WINDOW_CONTENT_H
#define BRINDLE_INFOWINDOW_INFO_WINDOW_CONTENT_H

namespace brindle {

constexpr const wchar_t* kInfoWindowTitle = L"About Brindle";
constexpr const wchar_t* kPluginName = L"Brindle";
constexpr const wchar_t* kPluginDescription =
    L"3D heat transfer solver for energy efficiency modeling";
constexpr const wchar_t* kPluginVersionLine = L"Version 0.2.9181.2064";

struct InfoLink {
  const wchar_t* caption;
  const wchar_t* address;
};

constexpr InfoLink kProductLink = {L"Product page", L"https://brindle.example.org/"};
constexpr InfoLink kDocumentationLink = {L"Documentation", L"https://brindle.example.org/docs/"};

}  // namespace brindle

#endif
