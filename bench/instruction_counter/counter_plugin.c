/*
 * Plugin for the user-mode emulator: counts executed guest instructions and hands the count to the guest.
 *
 * A guest that calls the otherwise unused system call kCountSystemCall with a file descriptor finds the count
 * so far in that descriptor, as eight bytes: guest descriptors are host descriptors under user-mode
 * emulation. The guest itself sees the call fail with ENOSYS.
 *
 * Debian installs no header for plugins, so the few declarations needed (plugin interface version 1) stand
 * here.
 */
#include <stdint.h>
#include <stdio.h>
#include <unistd.h>

#include "count_system_call.h"

#define EXPORT __attribute__((visibility("default")))

typedef uint64_t PluginId;
struct qemu_plugin_tb;
enum { kInlineAddU64 = 0 };

typedef void TranslationCallback(PluginId id, struct qemu_plugin_tb* block);
typedef void SystemCallCallback(PluginId id, unsigned int processor, int64_t number, uint64_t a1, uint64_t a2,
                                uint64_t a3, uint64_t a4, uint64_t a5, uint64_t a6, uint64_t a7, uint64_t a8);

void qemu_plugin_register_vcpu_tb_trans_cb(PluginId id, TranslationCallback* callback);
void qemu_plugin_register_vcpu_syscall_cb(PluginId id, SystemCallCallback* callback);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, int operation, void* counter,
                                              uint64_t addend);

EXPORT int qemu_plugin_version = 1;

static uint64_t executed_instructions;

/* A block of straight code runs from its first to its last instruction, so one addition a block is exact. */
static void count_block(PluginId id, struct qemu_plugin_tb* block) {
  (void)id;
  qemu_plugin_register_vcpu_tb_exec_inline(block, kInlineAddU64, &executed_instructions,
                                           qemu_plugin_tb_n_insns(block));
}

static void hand_over_count(PluginId id, unsigned int processor, int64_t number, uint64_t a1, uint64_t a2,
                            uint64_t a3, uint64_t a4, uint64_t a5, uint64_t a6, uint64_t a7, uint64_t a8) {
  (void)id, (void)processor, (void)a2, (void)a3, (void)a4, (void)a5, (void)a6, (void)a7, (void)a8;
  if (number != kCountSystemCall) return;
  if (write((int)a1, &executed_instructions, sizeof executed_instructions) !=
      (ssize_t)sizeof executed_instructions) {
    perror("instruction counter");
  }
}

EXPORT int qemu_plugin_install(PluginId id, const void* info, int argc, char** argv) {
  (void)info, (void)argc, (void)argv;
  qemu_plugin_register_vcpu_tb_trans_cb(id, count_block);
  qemu_plugin_register_vcpu_syscall_cb(id, hand_over_count);
  return 0;
}
