#include "platform/system/ClipboardForms.h"

#include <charconv>

namespace platform {

std::string headerOf(const ClipboardForm& form) {
  return std::string(form.target) + ' ' + std::to_string(form.bytes.size()) + '\n';
}

std::optional<std::vector<ClipboardForm>> parseForms(std::span<const std::uint8_t> bytes) {
  std::vector<ClipboardForm> forms;
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  while (!rest.empty()) {
    const std::string_view header = rest.substr(0, rest.find('\n'));
    const std::size_t blank = header.find(' ');
    if (header.size() == rest.size() || blank == 0 || blank == std::string_view::npos)
      return std::nullopt;
    std::size_t size = 0;
    const char* const end = header.data() + header.size();
    const auto [stop, error] = std::from_chars(header.data() + blank + 1, end, size);
    rest.remove_prefix(header.size() + 1);
    if (error != std::errc() || stop != end || size > rest.size())
      return std::nullopt;
    forms.push_back({header.substr(0, blank), {reinterpret_cast<const std::uint8_t*>(rest.data()), size}});
    rest.remove_prefix(size);
  }
  return forms.empty() ? std::nullopt : std::optional(std::move(forms));
}

}  // namespace platform
