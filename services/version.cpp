#include <zivk_core.h>

const ZIVKLibVersion* ZIVK_GetLibVersion(void) {
  static constexpr ZIVKLibVersion kVersion = {ZIVKS_VERSION_MAJOR, ZIVKS_VERSION_MINOR, ZIVKS_VERSION_PATCH,
                                              "zivks", ZIVKS_VERSION_TEXT};
  return &kVersion;
}
