// Owns what was copied to the clipboard until another program copies something:
//
//   clipboardkeeper <FORMS
//
// The standard input is a file that holds the contents' forms (ClipboardForms.h). The program ends with
// status 0 as soon as they can be pasted, and leaves a process of its own behind that gives them out; with
// status 1 where it can't own the clipboard, which is then as it was.

#include "platform/system/MappedFile.h"
#include "tools/clipboardkeeper/wayland/DataControlOwner.h"
#include "tools/clipboardkeeper/wayland/FocusOwner.h"
#include "tools/clipboardkeeper/x11/SelectionOwner.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

using namespace clipboardkeeper;

namespace {

enum Status { Owned = 0, NotOwned = 1 };

int fail(const char* reason) {
  std::fprintf(stderr, "clipboardkeeper: %s\n", reason);
  return NotOwned;
}

std::unique_ptr<ClipboardOwner> takeClipboard(const std::vector<platform::ClipboardForm>& forms) {
  // Compositors that don't offer data control pass the contents of an X program on, whoever has the keyboard;
  // where there is no X either, the keyboard has to be had for a moment.
  for (const auto& take : {DataControlOwner::take, SelectionOwner::take, FocusOwner::take})
    if (auto owner = take(forms))
      return owner;
  return nullptr;
}

/// Stays out of the way of whoever waits for the end of our output or unmounts the folder that we started in.
bool letGoOfSurroundings() {
  const platform::Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (dup2(nothing.get(), stream) < 0)
      return false;
  return chdir("/") == 0;
}

}  // namespace

int main() {
  close_range(STDERR_FILENO + 1, ~0U,
              0);  // what the program that started us had open is none of our business
  const auto file = platform::MappedFile::of(STDIN_FILENO);
  const auto forms = file ? platform::parseForms(file->bytes()) : std::nullopt;
  if (!forms)
    return fail("the standard input holds nothing to keep");
  const std::unique_ptr<ClipboardOwner> owner = takeClipboard(*forms);
  if (!owner)
    return fail("the clipboard can't be taken");
  const pid_t process = fork();
  if (process != 0)
    _exit(process > 0 ? Owned : fail("there can't be another process"));  // the connection is the other's now
  if (!letGoOfSurroundings())
    return NotOwned;
  owner->serve();
  return Owned;
}
