// The two directions of sorts.
#ifndef ZIVKS_SORT_DIRECTION_H
#define ZIVKS_SORT_DIRECTION_H

namespace zivks {

enum class Direction { kAscend, kDescend };

}  // namespace zivks

#endif
