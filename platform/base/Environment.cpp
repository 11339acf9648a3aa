#include "platform/base/Environment.h"

#include <algorithm>
#include <mutex>

namespace platform {
namespace {

Environment* innermost = nullptr;

/// Guards all environments. Recursive, since making a service may need another.
std::recursive_mutex& mutex() {
  static auto* const one = new std::recursive_mutex;
  return *one;
}

}  // namespace

Environment::Environment() : previous(innermost) {
  const std::lock_guard lock(mutex());
  innermost = this;
}

Environment::~Environment() {
  const auto takeLast = [this] {
    const std::lock_guard lock(mutex());
    const Any last = std::move(entries.back().service);
    entries.pop_back();
    return last;
  };
  while (!entries.empty())
    takeLast();  // and destroys it, without the lock
  const std::lock_guard lock(mutex());
  innermost = previous;
}

Environment& Environment::current() {
  if (!innermost)
    new Environment;  // for programs that have no end of their own to tidy up at
  return *innermost;
}

Environment::Entry* Environment::entry(std::type_index kind) {
  const auto found = std::ranges::find(entries, kind, &Entry::kind);
  return found == entries.end() ? nullptr : &*found;
}

Environment::Any Environment::find(std::type_index kind, const std::function<Any()>& make) {
  const std::lock_guard lock(mutex());
  if (const Entry* const known = current().entry(kind))
    return known->service;
  Any made = make();
  current().entries.push_back({kind, made});
  return made;
}

Environment::Any Environment::exchange(std::type_index kind, Any service) {
  const std::lock_guard lock(mutex());
  Environment& here = current();
  Any before;
  if (Entry* const known = here.entry(kind)) {
    before = std::move(known->service);
    std::erase_if(here.entries, [&](const Entry& each) { return each.kind == kind; });
  }
  if (service)
    here.entries.push_back({kind, std::move(service)});
  return before;
}

}  // namespace platform
