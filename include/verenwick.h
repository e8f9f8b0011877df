/**
 * Verenwick: torsional vibration of shaft lines. The C interface, for hosts in any language.
 *
 * Every argument passes by reference. Integers have 32 bits, reals are doubles, arrays are
 * contiguous and belong to the caller. The library is single-threaded and keeps state between
 * calls (the result directory): a process makes one call at a time. No call ends the process and
 * none throws.
 */
#ifndef VERENWICK_H
#define VERENWICK_H

#include <stdint.h>

#if defined(_WIN32)
#if defined(VERENWICK_BUILDING_LIBRARY)
#define VERENWICK_API __declspec(dllexport)
#else
#define VERENWICK_API __declspec(dllimport)
#endif
#else
#define VERENWICK_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * One complete run: reads and checks an input file, calculates, and leaves result files in a
 * directory.
 *
 * A text crosses as an array of integers, one character an element: the lowest byte counts, the
 * three upper bytes are ignored. A length of 0 or less is an empty text, at most 1000 elements are
 * taken; a longer text is refused with status 0. Directories may end in a backslash or not; an
 * empty directory is the current one. Where the platform separates by slashes, a backslash is
 * turned into one.
 *
 * @param inputFileDir        in,  inputFileDirLength elements: directory of the input file
 * @param inputFileDirLength  in,  number of elements
 * @param inputFileName       in,  inputFileNameLength elements: name of the input file
 * @param inputFileNameLength in,  number of elements
 * @param resultFileDir       in,  resultFileDirLength elements: an existing directory for the
 *                                 results
 * @param resultFileDirLength in,  number of elements
 * @param inputStatus         out, 1 if the input was read and passed every check, 0 if not; the
 *                                 words are in "Verenwick.log" in the result directory. A
 *                                 calculation that fails later leaves 1 and says so in the log.
 * @param calculationMode     in,  0 reports only, 1 free vibration, 2 forced vibration, 3 both, any
 *                                 other value both without preparing the power of couplings and
 *                                 dampers
 */
VERENWICK_API void VERENWICKSOLVER(const int32_t* inputFileDir, const int32_t* inputFileDirLength,
                                   const int32_t* inputFileName, const int32_t* inputFileNameLength,
                                   const int32_t* resultFileDir, const int32_t* resultFileDirLength,
                                   int32_t* inputStatus, const int32_t* calculationMode);

#ifdef __cplusplus
}
#endif

#endif
