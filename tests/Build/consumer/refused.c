#include <stdio.h>
#include <verenwick.h>

/* A model that can't be read is refused, in a directory that can't be written. */
int main(void) {
  const int32_t nothing[1] = {0};
  const int32_t none = 0;
  const int32_t where[] = {'/', 'n', 'o', 'w', 'h', 'e', 'r', 'e'};
  const int32_t length = 8;
  const int32_t mode = VERENWICK_MODE_FREE;
  int32_t status = 7;
  VERENWICKSOLVER(nothing, &none, nothing, &none, where, &length, &status, &mode);
  printf("status %d of version %s\n", (int)status, VERENWICK_VERSION);
  return status == 0 ? 0 : 1;
}
