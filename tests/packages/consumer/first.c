/* Goes through both libraries; the result is known. */
#include <tfmcore.h>
#include <tfmgen.h>

int main(void) {
  Tfm32f* x = tfmMalloc(4 * sizeof(Tfm32f));
  Tfm32f y[4] = {0};
  int ok = x != 0;
  if (ok) {
    x[0] = 1;
    x[1] = 2;
    x[2] = 3;
    x[3] = 4;
    ok = tfmgWHT_2_32f(x, y, TFM_NO_DIV, 0) == tfmStsOk && y[0] == 10 && y[1] == -2 && y[2] == -4 && y[3] == 0;
  }
  tfmFree(x);
  return ok ? 0 : 1;
}
