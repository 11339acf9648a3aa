#pragma once

namespace platform {

/// Why it isn't known whether there is a newer version, or why its package isn't there. The numbers are the
/// exit statuses by which the fetching program tells; the last three are found without it.
enum class UpdateProblem : int {
  Unreachable = 10,  // no network, no such server, or it takes no connection
  Insecure,          // the server doesn't prove who it is
  Redirected,        // to where an update may not come from, or too often
  Refused,           // the server answered that it has nothing there
  TooLarge,
  TooSlow,
  CutOff,      // the connection ended before the contents did
  Forged,      // the signature isn't one of the program's makers for these contents
  Malformed,   // nothing signed at all, or signed and yet no list of versions
  Unwritable,  // there is no room for the package, or no right to write it
  Outdated,    // an older list than the one seen before
  Broken,      // the fetching program is missing, or ended in another way
};

}  // namespace platform
