/* A C99 program on the installed library and its ready services: succeeds if the sum is right. */
#include <stdio.h>
#include <zivks.h>

int main(void) {
  enum { kLength = 1000 };
  float* sum = ZIVKS_Malloc_32f(kLength);
  if (sum == NULL) return 1;

  ZIVKStatus status = ZIVKS_Set_32f(1.5f, sum, kLength);
  if (status == ZIVK_STS_NO_ERR) status = ZIVKS_AddC_32f_I(0.25f, sum, kLength);
  if (status != ZIVK_STS_NO_ERR) {
    fprintf(stderr, "%s\n", ZIVKS_GetStatusString(status));
    return 1;
  }
  for (int i = 0; i < kLength; ++i) {
    if (sum[i] != 1.75f) return 1;
  }
  ZIVKS_Free(sum);

  printf("%s %s\n", ZIVKS_GetLibVersion()->name, ZIVKS_GetLibVersion()->text);
  return 0;
}
