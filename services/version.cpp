#include <zivk_core.h>
#include <zivks/version.h>

#define TEXT_OF(number) #number
#define VERSION_TEXT(major, minor, patch) TEXT_OF(major) "." TEXT_OF(minor) "." TEXT_OF(patch)

const ZIVKLibVersion* ZIVK_GetLibVersion(void) {
  static constexpr ZIVKLibVersion kVersion = {
      ZIVKS_VERSION_MAJOR, ZIVKS_VERSION_MINOR, ZIVKS_VERSION_PATCH, "zivks",
      VERSION_TEXT(ZIVKS_VERSION_MAJOR, ZIVKS_VERSION_MINOR, ZIVKS_VERSION_PATCH)};
  return &kVersion;
}
