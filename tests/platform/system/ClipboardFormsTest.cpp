#include "platform/system/ClipboardForms.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

std::optional<std::vector<ClipboardForm>> parse(std::string_view text) {
  return parseForms({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

TEST(ClipboardForms, theirNumbersOfBytesSaySizesNotTheirContents) {
  const auto forms = parse("image/png 4\n\n 1\ntext/x-empty 0\nx 1\n\n");
  ASSERT_TRUE(forms && forms->size() == 3);
  std::string again;
  for (const ClipboardForm& form : *forms)
    again += headerOf(form) + std::string(form.bytes.begin(), form.bytes.end());
  EXPECT_EQ(again, "image/png 4\n\n 1\ntext/x-empty 0\nx 1\n\n");
}

TEST(ClipboardForms, whatIsNotWholeIsNothing) {
  for (const char* broken : {"", "a", "a 1", "a 2\nb", " 1\nb", "a\nb", "a x\nb", "a 1x\nb", "a -1\nb",
                             "a 1\nbc", "a 99999999999999999999\nb", "a 18446744073709551615\nb"})
    EXPECT_FALSE(parse(broken)) << broken;
}

}  // namespace
