#pragma once

/** Ends the process, saying `claim`, when it does not hold. */
void require(bool holds, const char *claim);
