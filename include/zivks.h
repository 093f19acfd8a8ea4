/**
 * @file
 * The public interface of libzivks_base.so: one header a subsystem, and this one for all of them.
 */
#ifndef ZIVKS_H
#define ZIVKS_H

#include <zivks/arithmetic.h>
#include <zivks/convert.h>
#include <zivks/core.h>
#include <zivks/movement.h>
#include <zivks/statistics.h>
#include <zivks/types.h>

#endif
