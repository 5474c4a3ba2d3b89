// A bar on the error stream that says how far long work is.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>

#include <unistd.h>

namespace tool {

/// Draws a bar while work goes on, if the error stream is a terminal and the work takes longer than
/// half a second, and removes it in the end.
class Progress {
 public:
  explicit Progress(std::size_t steps) : steps_(steps), isSeen_(isatty(STDERR_FILENO) == 1) {}
  Progress(Progress const&) = delete;
  Progress& operator=(Progress const&) = delete;
  ~Progress() {
    if (drawn_ >= 0) std::fputs("\r\033[K", stderr);
  }

  /// One step of the work is done.
  void step() {
    ++done_;
    if (!isSeen_) return;
    int const percent =
        static_cast<int>(100.0 * static_cast<double>(done_) / static_cast<double>(steps_));
    if (percent == drawn_ || Clock::now() - start_ < std::chrono::milliseconds(500)) return;
    drawn_ = percent;
    std::string bar(kWidth, ' ');
    for (int i = 0; i < kWidth * percent / 100; ++i) bar[static_cast<std::size_t>(i)] = '#';
    std::fprintf(stderr, "\r[%s] %3d %%", bar.c_str(), percent);
    std::fflush(stderr);
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr int kWidth = 40;  // characters

  std::size_t steps_;
  std::size_t done_ = 0;
  bool isSeen_;
  int drawn_ = -1;
  Clock::time_point start_ = Clock::now();
};

}  // namespace tool
