#pragma once

#include <cstddef>
#include <functional>
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

    /// Another program does something in front of a call.
    Meanwhile,

    /// Another program holds files open and locked; the test sees to it.
    Held,

    // What happens to the disk itself.

    /// The folder of a call's file loses the right to be written in front of it.
    Rights,
    /// The file system ends in front of a call, with what it has not yet written.
    Pulled,
    /// So little of the disk is free from the beginning; the test sees to it.
    Filled,
    /// The disk is mounted read-only from the beginning; the test sees to it.
    Sealed,
};

struct FaultPlan {
    Fault Kind = Fault::None;
    /// The call that is met, from 1.
    std::size_t At = 0;
    /// The file system can only do what every one can: it shares no blocks, copies nothing within itself, reserves
    /// nothing, and renames only over what is there.
    bool IsPlain = false;
    /// What another program does.
    std::function<void()> Meanwhile;
};

/// Counts the calls below a folder from now on, and lets the plan's fault happen.
void ArmFaults(const std::string &folder, const FaultPlan &plan);
/// What was counted, a letter for each call: "w" for one that writes, else "c". Nothing happens from now on.
std::string DisarmFaults();
