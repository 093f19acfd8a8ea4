/**
 * @file
 * The version of the headers. ZIVKS_GetLibVersion() tells the one of the library that is loaded.
 */
#ifndef ZIVKS_VERSION_H
#define ZIVKS_VERSION_H

#define ZIVKS_VERSION_MAJOR 1 /**< grows with incompatible changes */
#define ZIVKS_VERSION_MINOR 0 /**< grows with compatible additions */
#define ZIVKS_VERSION_PATCH 0 /**< grows with corrections */

/** One number to compare: `#if ZIVKS_VERSION >= 10200` asks for version 1.2.0 or later. */
#define ZIVKS_VERSION (ZIVKS_VERSION_MAJOR * 10000 + ZIVKS_VERSION_MINOR * 100 + ZIVKS_VERSION_PATCH)

#endif
