// A library with the faults that the checks of the built files look for: it proves that they find them.
#include <new>

int writable = 1;
int constructed = *new int;

void throws() { throw writable; }

typedef int Vector __attribute__((vector_size(16)));
__attribute__((noinline)) Vector rounded(Vector a) { return (a + (a & 1)) >> 1; }

void calls_in_a_loop(Vector* array, unsigned long len) {
  for (unsigned long i = 0; i < len; ++i) array[i] = rounded(array[i]);
}

asm(".text\n.globl undescribed\n.type undescribed, @function\nundescribed: ret");
