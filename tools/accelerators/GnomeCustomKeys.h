#pragma once

#include <span>

/// Whether this desktop has custom hot keys at all.
[[nodiscard]] bool canAddGnomeKeys();

/// Makes these this program's custom hot keys, and takes away all others that it had: for each its name, what
/// the user reads, the command and the accelerator. False where they can't be had or written.
[[nodiscard]] bool setGnomeKeys(std::span<const char* const> entries);
