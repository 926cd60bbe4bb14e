#pragma once

#include <string>

/// What happens to the calls of the system that write, rename, create, delete or flush something below a folder.
enum class Fault {
    None,
    /// One call fails.
    Error,
    /// One writing call takes half of its bytes.
    Half,
    /// The disk is full from half of one writing call on.
    Full,
    /// The disk is read-only from one call on.
    ReadOnly,
    /// The disk is gone from one call on, for reading too.
    Gone,
    /// The process is killed in front of one call.
    Kill,
    /// The process is killed when one writing call has taken half of its bytes.
    KillHalf,
};

/// Counts the calls from now on, and lets the fault happen at one of them, from 1.
void ArmFaults(const std::string &folder, Fault fault, int at);
/// What was counted, a letter for each call: "w" for one that writes, else "c". Nothing happens from now on.
std::string DisarmFaults();
