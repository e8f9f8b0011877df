/* Runs a plant in mode 1 and prints its natural frequencies.
 * usage: run INPUT_DIRECTORY INPUT_NAME RESULT_DIRECTORY */
#include <stdio.h>
#include <string.h>
#include <verenwick.h>

/* Text crosses as one integer a character. */
static int32_t unpack(const char* text, int32_t* characters) {
  const size_t length = strlen(text) < VERENWICK_TEXT_LENGTH ? strlen(text) : VERENWICK_TEXT_LENGTH;
  for (size_t i = 0; i < length; ++i) {
    characters[i] = (unsigned char)text[i];
  }
  return (int32_t)length;
}

int main(int argc, char** argv) {
  if (argc != 4) {
    fprintf(stderr, "usage: run INPUT_DIRECTORY INPUT_NAME RESULT_DIRECTORY\n");
    return 2;
  }
  int32_t directory[VERENWICK_TEXT_LENGTH], name[VERENWICK_TEXT_LENGTH],
      results[VERENWICK_TEXT_LENGTH];
  const int32_t directoryLength = unpack(argv[1], directory);
  const int32_t nameLength = unpack(argv[2], name);
  const int32_t resultsLength = unpack(argv[3], results);
  const int32_t mode = VERENWICK_MODE_FREE;
  int32_t status = 0;
  VERENWICKSOLVER(directory, &directoryLength, name, &nameLength, results, &resultsLength, &status,
                  &mode);
  if (status != 1) {
    fprintf(stderr, "refused: see Verenwick.log in %s\n", argv[3]);
    return 1;
  }
  char path[VERENWICK_TEXT_LENGTH + 32];
  snprintf(path, sizeof path, "%s/NaturalFrequency.bin", argv[3]);
  FILE* file = fopen(path, "rb");
  if (file == NULL) {
    return 1;
  }
  double omega = 0.0;
  for (int mode = 1; fread(&omega, sizeof omega, 1, file) == 1; ++mode) {
    printf("mode %d: %.2f 1/min\n", mode, omega * 30.0 / 3.141592653589793);
  }
  return fclose(file);
}
