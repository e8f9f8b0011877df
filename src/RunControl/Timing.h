#pragma once

/// Helpers to time a run. Not part of a run.
namespace verenwick {

/// Appends the time of day, in hours, minutes, seconds and hundredths, to "c:\timelog.txt".
void RECORDTIME();

/// Time of day, s.
float MY_WCT_TIME();

/// Processor time of the process, s.
double MY_CPU_TIME();

}  // namespace verenwick
