#if defined(_WIN32)

#include "infowindow/info_window_win32.h"

#include <shellapi.h>
#include <uxtheme.h>

#include <algorithm>

#include "infowindow/info_picture_win32.h"
#include "infowindow/info_window_content.h"

#ifndef WM_DWMCOMPOSITIONCHANGED
#define WM_DWMCOMPOSITIONCHANGED 0x031E
#endif

namespace brindle {
namespace {

constexpr const wchar_t* kClassName = L"BrindleInfoWindow";
constexpr int kProductLinkId = 101;
constexpr int kDocumentationLinkId = 102;

// Layout in 96-dpi pixels of the client area.
constexpr int kClientWidth = 480;
constexpr int kClientHeight = 232;
constexpr int kMargin = 24;
constexpr int kPictureSize = 96;
constexpr int kTextLeft = kMargin + kPictureSize + 24;
constexpr int kButtonHeight = 28;
constexpr int kLinkButtonWidth = 120;
constexpr int kCloseButtonWidth = 96;
// Width of the glass rim that the frame is extended by under desktop composition.
constexpr int kGlassRim = 8;

using IsCompositionEnabledFunction = HRESULT(WINAPI*)(BOOL*);
using ExtendFrameFunction = HRESULT(WINAPI*)(HWND, const MARGINS*);

// GetProcAddress returns a generic function pointer; going through void(*)() is the cast
// compilers accept between unrelated function pointer types.
template <class Function>
Function LoadFunction(HMODULE module, const char* name) {
  if (!module) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

}  // namespace

InfoWindow::~InfoWindow() {
  if (window_) DestroyWindow(window_);
  if (titleFont_) DeleteObject(titleFont_);
  if (textFont_) DeleteObject(textFont_);
  if (dwmapi_) FreeLibrary(dwmapi_);
}

HWND InfoWindow::Create(HINSTANCE instance) {
  WNDCLASSEXW windowClass = {};
  windowClass.cbSize = sizeof(windowClass);
  windowClass.lpfnWndProc = &InfoWindow::Procedure;
  windowClass.hInstance = instance;
  windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  windowClass.lpszClassName = kClassName;
  // A window of an earlier opening may still hold the class while its thread winds down.
  if (!RegisterClassExW(&windowClass) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
    return nullptr;
  }

  HDC screen = GetDC(nullptr);
  if (screen) {
    dpi_ = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
  }
  if (dpi_ <= 0) dpi_ = 96;
  dwmapi_ = LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);

  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  const DWORD exStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
  const RECT frame = InitialWindowRect();
  return CreateWindowExW(exStyle, kClassName, kInfoWindowTitle, style, frame.left, frame.top,
                         frame.right - frame.left, frame.bottom - frame.top, owner_, nullptr,
                         instance, this);
}

void InfoWindow::Show() {
  if (owner_ && IsWindowEnabled(owner_)) {
    EnableWindow(owner_, FALSE);
    ownerDisabled_ = true;
  }
  ShowWindow(window_, SW_SHOWNORMAL);
  UpdateWindow(window_);
  SetForegroundWindow(window_);
}

void InfoWindow::WithdrawClass(HINSTANCE instance) {
  UnregisterClassW(kClassName, instance);
}

// Centred on the owner, or on the primary work area without one, and kept inside the work area.
RECT InfoWindow::InitialWindowRect() const {
  RECT frame = {0, 0, Scaled(kClientWidth), Scaled(kClientHeight)};
  AdjustWindowRectEx(&frame, WS_POPUP | WS_CAPTION | WS_SYSMENU, FALSE,
                     WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT);
  const int width = frame.right - frame.left;
  const int height = frame.bottom - frame.top;

  MONITORINFO monitor = {};
  monitor.cbSize = sizeof(monitor);
  RECT work = {0, 0, 1024, 768};
  if (GetMonitorInfoW(MonitorFromWindow(owner_, MONITOR_DEFAULTTOPRIMARY), &monitor)) {
    work = monitor.rcWork;
  }
  RECT around = work;
  if (owner_) GetWindowRect(owner_, &around);
  LONG left = around.left + (around.right - around.left - width) / 2;
  LONG top = around.top + (around.bottom - around.top - height) / 2;
  left = std::max<LONG>(work.left, std::min<LONG>(left, work.right - width));
  top = std::max<LONG>(work.top, std::min<LONG>(top, work.bottom - height));
  return {left, top, left + width, top + height};
}

LRESULT CALLBACK InfoWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<InfoWindow*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<InfoWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!self) return DefWindowProcW(window, message, wparam, lparam);
  return self->Handle(message, wparam, lparam);
}

LRESULT InfoWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_CREATE:
      CreateFonts();
      CreateButtons();
      UpdateFrame();
      return 0;
    case WM_DWMCOMPOSITIONCHANGED:
      UpdateFrame();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // WM_PAINT covers the whole client area
    case WM_PAINT: {
      PAINTSTRUCT paint;
      HDC dc = BeginPaint(window_, &paint);
      if (dc) Paint(dc);
      EndPaint(window_, &paint);
      return 0;
    }
    case WM_CTLCOLORBTN:
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    case WM_COMMAND:
      if (HIWORD(wparam) != BN_CLICKED) break;
      switch (LOWORD(wparam)) {
        case kProductLinkId:
          OpenLink(kProductLink.address);
          return 0;
        case kDocumentationLinkId:
          OpenLink(kDocumentationLink.address);
          return 0;
        case IDOK:
        case IDCANCEL:
          PostMessageW(window_, WM_CLOSE, 0, 0);
          return 0;
      }
      break;
    case WM_CLOSE:
      // The owner is enabled before the window goes, so that activation returns to it rather
      // than to some other application.
      EnableOwner();
      DestroyWindow(window_);
      return 0;
    case WM_DESTROY:
      EnableOwner();
      PostQuitMessage(0);
      return 0;
    case WM_NCDESTROY: {
      HWND window = window_;
      HWND expected = window;
      published_.compare_exchange_strong(expected, nullptr);
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      window_ = nullptr;
      return DefWindowProcW(window, message, wparam, lparam);
    }
  }
  return DefWindowProcW(window_, message, wparam, lparam);
}

void InfoWindow::CreateFonts() {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof(metrics);
  LOGFONTW text = {};
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) {
    text = metrics.lfMessageFont;
  } else {
    GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof(text), &text);
  }
  textFont_ = CreateFontIndirectW(&text);
  LOGFONTW title = text;
  title.lfHeight = -Scaled(26);
  title.lfWeight = FW_BOLD;
  titleFont_ = CreateFontIndirectW(&title);
}

void InfoWindow::CreateButtons() {
  const DWORD linkStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON;
  AddButton(kProductLink.caption, kProductLinkId, linkStyle, kMargin, kLinkButtonWidth);
  AddButton(kDocumentationLink.caption, kDocumentationLinkId, linkStyle,
            kMargin + kLinkButtonWidth + 8, kLinkButtonWidth);
  HWND close = AddButton(L"Close", IDOK, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON,
                         kClientWidth - kMargin - kCloseButtonWidth, kCloseButtonWidth);
  if (close) SetFocus(close);
}

HWND InfoWindow::AddButton(const wchar_t* caption, int id, DWORD style, int x, int width) {
  const int top = kClientHeight - kMargin - kButtonHeight;
  HWND button = CreateWindowExW(
      0, L"BUTTON", caption, style, Scaled(x), Scaled(top), Scaled(width), Scaled(kButtonHeight),
      window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
      reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window_, GWLP_HINSTANCE)), nullptr);
  if (button && textFont_)
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(textFont_), FALSE);
  return button;
}

// Under desktop composition the frame reaches into the client area as a glass rim; without it,
// or where the composition service is missing, the window keeps a plain frame.
void InfoWindow::UpdateFrame() {
  const auto isEnabled =
      LoadFunction<IsCompositionEnabledFunction>(dwmapi_, "DwmIsCompositionEnabled");
  const auto extend = LoadFunction<ExtendFrameFunction>(dwmapi_, "DwmExtendFrameIntoClientArea");
  BOOL enabled = FALSE;
  glass_ = isEnabled && extend && SUCCEEDED(isEnabled(&enabled)) && enabled;
  if (extend) {
    const int rim = glass_ ? Scaled(kGlassRim) : 0;
    const MARGINS margins = {rim, rim, rim, rim};
    if (FAILED(extend(window_, &margins))) glass_ = false;
  }
  InvalidateRect(window_, nullptr, TRUE);
}

void InfoWindow::Paint(HDC dc) {
  RECT client;
  GetClientRect(window_, &client);
  RECT inside = client;
  if (glass_) {
    // Black is what the composited frame shows as glass.
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    InflateRect(&inside, -Scaled(kGlassRim), -Scaled(kGlassRim));
  }
  FillRect(dc, &inside, GetSysColorBrush(COLOR_WINDOW));

  const RECT picture = {Scaled(kMargin), Scaled(kMargin), Scaled(kMargin + kPictureSize),
                        Scaled(kMargin + kPictureSize)};
  DrawInfoPicture(dc, picture);

  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  const UINT line = DT_LEFT | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
  DrawTextLine(dc, titleFont_, kPluginName, kMargin, 36, line);
  DrawTextLine(dc, textFont_, kPluginDescription, kMargin + 44, 40,
               DT_LEFT | DT_WORDBREAK | DT_NOPREFIX);
  SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
  DrawTextLine(dc, textFont_, kPluginVersionLine, kMargin + 84, 20, line);
}

void InfoWindow::DrawTextLine(HDC dc, HFONT font, const wchar_t* text, int top, int height,
                              UINT format) {
  RECT box = {Scaled(kTextLeft), Scaled(top), Scaled(kClientWidth - kMargin), Scaled(top + height)};
  HGDIOBJ previous = font ? SelectObject(dc, font) : nullptr;
  DrawTextW(dc, text, -1, &box, format);
  if (previous) SelectObject(dc, previous);
}

// The shell opens the address with the user's browser. A failure only beeps: the window stays
// usable and there is nobody to report an error code to.
void InfoWindow::OpenLink(const wchar_t* address) {
  const auto result = reinterpret_cast<INT_PTR>(
      ShellExecuteW(window_, L"open", address, nullptr, nullptr, SW_SHOWNORMAL));
  if (result <= 32) MessageBeep(MB_ICONWARNING);
}

void InfoWindow::EnableOwner() {
  if (!ownerDisabled_) return;
  EnableWindow(owner_, TRUE);
  ownerDisabled_ = false;
}

}  // namespace brindle

#endif
