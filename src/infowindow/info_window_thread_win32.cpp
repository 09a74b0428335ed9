#if defined(_WIN32)

#include <objbase.h>

#include "infowindow/info_window_win32.h"

namespace brindle {
namespace {

// What the opening call hands to the window thread. It lives on the opening call's stack, so
// the thread reads it only until it signals `ready`.
struct InfoWindowStartup {
  HWND owner = nullptr;
  InfoWindowSlot* slot = nullptr;
  HMODULE module = nullptr;
  HANDLE ready = nullptr;
  DWORD error = 0;
};

void RunMessageLoop(HWND window) {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    // Gives the window keyboard navigation: Tab between buttons, Enter and Escape close it.
    if (IsWindow(window) && IsDialogMessageW(window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void RunInfoWindow(InfoWindowStartup& startup) {
  InfoWindowSlot& slot = *startup.slot;
  const HINSTANCE instance = startup.module;
  // The shell wants COM on a thread that opens links.
  const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  {
    InfoWindow window(startup.owner, slot.handle);
    HWND handle = window.Create(instance);
    if (!handle) {
      startup.error = GetLastError() ? GetLastError() : ERROR_CANNOT_MAKE;
      SetEvent(startup.ready);
    } else {
      slot.handle.store(handle);
      window.Show();
      SetEvent(startup.ready);
      RunMessageLoop(handle);
    }
  }
  {
    std::lock_guard<std::mutex> lock(slot.opening);
    InfoWindow::WithdrawClass(instance);
  }
  if (SUCCEEDED(com)) CoUninitialize();
}

// The thread holds a reference on the library's module for as long as it runs, so the host
// cannot unload the code under an open window; it drops it as it exits.
DWORD WINAPI InfoWindowThread(void* parameter) {
  auto& startup = *static_cast<InfoWindowStartup*>(parameter);
  const HMODULE module = startup.module;
  RunInfoWindow(startup);
  FreeLibraryAndExitThread(module, 0);
}

// Waits for `event` while still serving messages sent to this thread. The new window disables
// and deactivates its owner, which may belong to this thread; without serving those messages
// the two threads would wait for each other.
DWORD WaitServingSentMessages(HANDLE event) {
  for (;;) {
    const DWORD woken = MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_SENDMESSAGE);
    if (woken == WAIT_OBJECT_0) return 0;
    if (woken != WAIT_OBJECT_0 + 1) return GetLastError() ? GetLastError() : ERROR_INVALID_HANDLE;
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace

DWORD OpenInfoWindow(HWND owner, InfoWindowSlot& slot) {
  InfoWindowStartup startup;
  startup.owner = owner;
  startup.slot = &slot;
  if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                          reinterpret_cast<LPCWSTR>(&InfoWindowThread), &startup.module)) {
    return GetLastError();
  }
  startup.ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (!startup.ready) {
    const DWORD error = GetLastError();
    FreeLibrary(startup.module);
    return error;
  }
  HANDLE thread = CreateThread(nullptr, 0, &InfoWindowThread, &startup, 0, nullptr);
  if (!thread) {
    const DWORD error = GetLastError();
    CloseHandle(startup.ready);
    FreeLibrary(startup.module);
    return error;
  }
  CloseHandle(thread);
  const DWORD waitError = WaitServingSentMessages(startup.ready);
  CloseHandle(startup.ready);
  return waitError ? waitError : startup.error;
}

}  // namespace brindle

#endif
