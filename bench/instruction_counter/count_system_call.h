#ifndef BENCH_INSTRUCTION_COUNTER_COUNT_SYSTEM_CALL_H
#define BENCH_INSTRUCTION_COUNTER_COUNT_SYSTEM_CALL_H

/* A number that no Linux system call has. The argument is the descriptor that the count is written to. */
enum { kCountSystemCall = 31072 };

#endif
