#pragma once

/**
 * Writes down what this process has used so far, as lines NAME=VALUE: wall (seconds
 * since its start), cpu (seconds), peak_kib and resident_kib. Nothing happens without
 * R4_BENCH_START and R4_BENCH_RECORD in the environment; see end_probe.cpp.
 */
void writeRecord();
