#pragma once

#include <cstddef>
#include <vector>

/** What of a system call tells which file it is about. */
enum class Subject
{
    Path,       // argument 0 is a path
    PathAt,     // arguments 0 and 1 are a folder's descriptor and a path, or an empty one
    PathToMake, // arguments 2 and 3: the new name of linkat and renameat
    Descriptor, // argument 0 is a descriptor
    SecondPath, // argument 1 is a path
    Always      // about the machine as a whole: always on the road
};

struct CallKind
{
    long number;
    const char *name;
    Subject subject;
};

/** The calls that are stopped at. Everything else runs at full speed. */
const std::vector<CallKind> &callTable();

/** Null for a call that is not in the table. */
const CallKind *callOfNumber(long number);
const CallKind *callOfName(const char *name);
