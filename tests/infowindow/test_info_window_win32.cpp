// The information window on Windows. Opening a window needs a desktop; where there is none
// (a headless test run) the tests that open one report themselves skipped.
#if defined(_WIN32)

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "brindle.h"

namespace {

// Serves this thread's messages until `done` holds or half a minute passes (a loaded test
// machine can be slow to tear windows down).
template <class Condition>
bool PumpUntil(Condition done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    Sleep(10);
  }
  return true;
}

// Windows of the information window's class that belong to this process; other test programs
// may have theirs open at the same time.
int CountInfoWindows() {
  int count = 0;
  for (HWND window = nullptr;
       (window = FindWindowExW(nullptr, window, L"BrindleInfoWindow", nullptr)) != nullptr;) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) ++count;
  }
  return count;
}

class InfoWindowTest : public testing::Test {
 protected:
  // Opens the window, skipping the test where no window can be created at all.
  HWND Open(HWND owner) {
    char error[1024] = "";
    const int status = doPoshModal(owner, error);
    if (status == 3) {
      skipped_ = true;
      return nullptr;
    }
    EXPECT_EQ(status, 0) << error;
    EXPECT_STREQ(error, "");
    return static_cast<HWND>(getPoshHandle());
  }

  // Closes the window as its title bar would and waits until it is gone.
  void Close(HWND window) {
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(PumpUntil([] { return getPoshHandle() == nullptr; }));
    EXPECT_TRUE(PumpUntil([window] { return !IsWindow(window); }));
  }

  void TearDown() override {
    if (HWND open = static_cast<HWND>(getPoshHandle())) Close(open);
  }

  bool skipped_ = false;
};

TEST_F(InfoWindowTest, RejectsAnOwnerThatIsNotAWindow) {
  char error[1024] = "stale";
  HWND notAWindow = reinterpret_cast<HWND>(static_cast<INT_PTR>(0x7ff0));
  EXPECT_EQ(doPoshModal(notAWindow, error), 2);
  EXPECT_STREQ(error, "The owner window handle is not a window");
  EXPECT_EQ(getPoshHandle(), nullptr);
}

TEST_F(InfoWindowTest, SecondCallRaisesTheOpenWindowInsteadOfOpeningAnother) {
  EXPECT_EQ(getPoshHandle(), nullptr);
  HWND window = Open(nullptr);
  if (skipped_) GTEST_SKIP() << "no desktop to open a window on";
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(IsWindowVisible(window));

  char error[1024] = "stale";
  EXPECT_EQ(doPoshModal(nullptr, error), 0);
  EXPECT_STREQ(error, "");
  EXPECT_EQ(getPoshHandle(), window);
  EXPECT_EQ(CountInfoWindows(), 1);

  Close(window);
  EXPECT_EQ(CountInfoWindows(), 0);
}

TEST_F(InfoWindowTest, IsModalToItsOwnerUntilClosed) {
  HWND owner = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100,
                               640, 480, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!owner) GTEST_SKIP() << "no desktop to open a window on";
  HWND window = Open(owner);
  if (skipped_) {
    DestroyWindow(owner);
    GTEST_SKIP() << "no desktop to open a window on";
  }
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(GetWindow(window, GW_OWNER), owner);
  EXPECT_FALSE(IsWindowEnabled(owner));

  Close(window);
  EXPECT_TRUE(IsWindowEnabled(owner));
  DestroyWindow(owner);
}

TEST_F(InfoWindowTest, ClosesWithEscapeAndOpensAgainAfterwards) {
  HWND first = Open(nullptr);
  if (skipped_) GTEST_SKIP() << "no desktop to open a window on";
  ASSERT_NE(first, nullptr);
  // A key pressed on one of its buttons goes through the window's own message loop.
  HWND closeButton = GetDlgItem(first, IDOK);
  ASSERT_NE(closeButton, nullptr);
  PostMessageW(closeButton, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(PumpUntil([] { return getPoshHandle() == nullptr; }));

  // The closed window's thread withdraws the window class; a new window must still open.
  HWND second = Open(nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_TRUE(IsWindowVisible(second));
  Close(second);
}

TEST_F(InfoWindowTest, ConcurrentCallsOpenOneWindow) {
  std::atomic<int> unavailable{0};
  std::atomic<int> failed{0};
  std::vector<std::thread> callers;
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      const int status = doPoshModal(nullptr, nullptr);
      if (status == 3) ++unavailable;
      if (status != 0 && status != 3) ++failed;
    });
  }
  for (std::thread& caller : callers)
    caller.join();
  if (unavailable == 4) GTEST_SKIP() << "no desktop to open a window on";
  EXPECT_EQ(unavailable, 0);
  EXPECT_EQ(failed, 0);
  EXPECT_EQ(CountInfoWindows(), 1);
}

}  // namespace

#endif
