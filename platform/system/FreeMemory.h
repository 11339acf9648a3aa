#pragma once

namespace platform {

/// Gives the heap's free pages back to the system, which the heap else keeps for what may come. For a program
/// that has just let go of much and is about to rest; takes some milliseconds.
void giveBackFreeMemory();

}  // namespace platform
