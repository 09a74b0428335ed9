// The information window on Windows: a modal pop-up with its own thread and message loop.
#ifndef BRINDLE_INFOWINDOW_INFO_WINDOW_WIN32_H
#define BRINDLE_INFOWINDOW_INFO_WINDOW_WIN32_H
#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <atomic>
#include <mutex>

namespace brindle {

// The one information window of the process; the only state the library keeps between calls.
struct InfoWindowSlot {
  // Held while a window is being opened, and while a closed window's thread withdraws the
  // window class, so that a new window never loses its class to the old thread.
  std::mutex opening;
  // The open window, null when none is open. Its thread publishes it once created and clears
  // it when the window is destroyed.
  std::atomic<HWND> handle{nullptr};
};

// Opens the information window owned by `owner` (may be null), or brings the open one to the
// front: 0, or the Windows error code of the failure.
DWORD ShowInfoWindow(HWND owner);

// The open information window, null when none is open.
HWND OpenInfoWindowHandle();

// Opens the information window, owned by `owner` (may be null), on a new thread and returns
// once it is shown: 0, or the Windows error code of the failure. The caller holds
// `slot.opening` and has checked that no window is open.
DWORD OpenInfoWindow(HWND owner, InfoWindowSlot& slot);

// The window itself. It lives on the window thread's stack, which outlasts the window.
class InfoWindow {
 public:
  InfoWindow(HWND owner, std::atomic<HWND>& published) : owner_(owner), published_(published) {}
  ~InfoWindow();
  InfoWindow(const InfoWindow&) = delete;
  InfoWindow& operator=(const InfoWindow&) = delete;

  // Registers the window class of `instance` if needed and creates the hidden window;
  // returns null with the thread's last error set on failure.
  HWND Create(HINSTANCE instance);
  // Disables the owner, which makes the window modal, then shows and activates the window.
  void Show();

  // Withdraws the window class once no window of it is left (the module may be unloaded).
  static void WithdrawClass(HINSTANCE instance);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);

  void CreateFonts();
  void CreateButtons();
  HWND AddButton(const wchar_t* caption, int id, DWORD style, int x, int width);
  RECT InitialWindowRect() const;
  void UpdateFrame();
  void Paint(HDC dc);
  void DrawTextLine(HDC dc, HFONT font, const wchar_t* text, int top, int height, UINT format);
  void OpenLink(const wchar_t* address);
  void EnableOwner();
  int Scaled(int length) const { return MulDiv(length, dpi_, 96); }

  HWND window_ = nullptr;
  HWND owner_ = nullptr;
  bool ownerDisabled_ = false;
  std::atomic<HWND>& published_;
  int dpi_ = 96;
  HFONT titleFont_ = nullptr;
  HFONT textFont_ = nullptr;
  HMODULE dwmapi_ = nullptr;
  bool glass_ = false;
};

}  // namespace brindle

#endif
#endif
