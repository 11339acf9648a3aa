#include "platform/imaging/png/Bands.h"

#include <algorithm>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace platform {

void forEachBand(int count, int smallest, Cores cores, const std::function<void(int, int)>& work) {
  const int available = cores == Cores::All ? static_cast<int>(std::thread::hardware_concurrency()) : 1;
  const int bands = std::clamp(count / smallest, 1, std::max(available, 1));
  const auto start = [&](int band) { return static_cast<int>(static_cast<long long>(count) * band / bands); };
  std::vector<std::future<void>> others;
  others.reserve(static_cast<size_t>(bands));
  int here = bands;  // the bands from the first to this one are left to the calling core
  try {
    for (; here > 1; --here)
      others.push_back(std::async(std::launch::async, work, start(here - 1), start(here)));
  } catch (const std::system_error&) {
    // No more threads to be had: the calling core does the rest.
  }
  work(0, start(here));
  for (std::future<void>& other : others)
    other.get();
}

}  // namespace platform
