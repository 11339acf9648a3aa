#pragma once

namespace platform {

/// Lets all threads share one heap, to be called before the first thread begins. A thread's own heap keeps
/// the free memory at its end whatever giveBackFreeMemory() does, which after saving is more than a picture's
/// file.
void shareOneHeap();

/// Gives the heap's free pages back to the system, which the heap else keeps for what may come. For a program
/// that has just let go of much and is about to rest; takes some milliseconds.
void giveBackFreeMemory();

}  // namespace platform
