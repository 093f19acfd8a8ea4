#ifndef ZIVKS_EXAMPLES_QUERY_TABLE_H
#define ZIVKS_EXAMPLES_QUERY_TABLE_H

#include "column.h"

// Prints aligned columns: a line of names, a line of dashes, and the rows, numbers flushed to the right. Null is blank,
// and a control character within a text is shown as in C.
void print_table(const Answer& answer);

#endif
