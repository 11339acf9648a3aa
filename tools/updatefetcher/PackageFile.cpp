#include "tools/updatefetcher/PackageFile.h"

#include "platform/system/Descriptor.h"
#include "platform/system/MappedFile.h"
#include "tools/updatefetcher/Download.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace updatefetcher {
namespace {

using platform::Descriptor;
using platform::UpdateProblem;

constexpr mode_t ownersFile = 0600, ownersFolder = 0700;

UpdateProblem unwritable(const std::string& path, int error) {
  std::fprintf(stderr, "updatefetcher: %s: %s\n", path.c_str(), std::strerror(error));
  return UpdateProblem::Unwritable;
}

/// Absent for what is no plain file.
std::optional<std::uint64_t> sizeOf(const Descriptor& file) {
  struct stat status {};
  if (!file.isOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
    return {};
  return static_cast<std::uint64_t>(status.st_size);
}

bool isWhole(const Descriptor& file, const Arguments& wanted) {
  if (sizeOf(file) != wanted.size)
    return false;
  const auto contents = platform::MappedFile::of(file.get());
  return contents && verifies(contents->bytes(), wanted.signature, wanted.key);
}

bool isThere(const Arguments& wanted) {
  const Descriptor file(open(wanted.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  return isWhole(file, wanted);
}

/// Makes the folders above the file that are missing, for the user alone. Whether it worked shows when the
/// file is opened.
void makeFolders(const std::string& path) {
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  std::filesystem::path made;
  for (const auto& part : folder) {
    made /= part;
    (void)mkdir(made.c_str(), ownersFolder);
  }
}

bool mayBeResumed(UpdateProblem problem) {
  return problem == UpdateProblem::CutOff || problem == UpdateProblem::TooSlow ||
         problem == UpdateProblem::Unreachable;
}

/// Adds to the file what is missing of it.
std::optional<UpdateProblem> fetchRest(const Descriptor& file, std::uint64_t present,
                                       const Arguments& wanted) {
  auto end = static_cast<off_t>(present);
  int error = ftruncate(file.get(), end) == 0 ? 0 : errno;
  Download download{wanted.address, wanted.limits, present, wanted.size - present, {}};
  download.take = [&](std::span<const std::uint8_t> bytes) {
    error = platform::writeAll(file.get(), bytes, end);
    end += static_cast<off_t>(bytes.size());
    return error == 0;
  };
  const auto problem = error == 0 ? fetch(download) : std::nullopt;
  if (error != 0)
    return unwritable(wanted.path, error);
  return problem;
}

/// As fetchPackage(), but for the file's name.
std::optional<UpdateProblem> complete(const Descriptor& file, const Arguments& wanted) {
  std::uint64_t present = sizeOf(file).value_or(0);
  if (present > wanted.size)
    present = 0;
  for (;;) {
    if (present < wanted.size) {
      const auto problem = fetchRest(file, present, wanted);
      if (problem && (present == 0 || mayBeResumed(*problem) || problem == UpdateProblem::Unwritable))
        return problem;
    }
    if (isWhole(file, wanted))
      return {};
    std::fputs("updatefetcher: the package's signature is wrong\n", stderr);
    if (present == 0)
      return UpdateProblem::Forged;
    present = 0;
  }
}

}  // namespace

std::optional<UpdateProblem> fetchPackage(const Arguments& wanted) {
  if (isThere(wanted))
    return {};
  makeFolders(wanted.path);
  const std::string partPath = wanted.path + ".part";
  Descriptor part(open(partPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, ownersFile));
  if (!part.isOpen() || flock(part.get(), LOCK_EX | LOCK_NB) != 0)  // somebody else may be at it
    return unwritable(partPath, errno);
  (void)unlink(wanted.path.c_str());  // another package, or half of one
  auto problem = complete(part, wanted);
  const bool isKept =
      !problem && fsync(part.get()) == 0 && rename(partPath.c_str(), wanted.path.c_str()) == 0;
  if (!problem && !isKept)
    problem = unwritable(wanted.path, errno);
  if (problem && !mayBeResumed(*problem))
    (void)unlink(partPath.c_str());
  return problem;
}

}  // namespace updatefetcher
