#pragma once

namespace Tessel {

/**
 * Moves a descriptor that was just opened to a number above the standard streams'.
 *
 * In a process started without its standard streams open(2) and its like hand out
 * their numbers. Services that write 0 for "not open" would then leave the thing
 * unused, and on 1 or 2 each printed line would go into it. A negative argument is
 * returned as it is. When the move fails the descriptor is closed and a negative
 * number returned; errno tells why.
 */
int moveClearOfStandardStreams(int descriptor);

} // namespace Tessel
