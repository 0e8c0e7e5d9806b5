// SPDX-License-Identifier: MIT

// A plugin of the emulator qemu. It counts the instructions of what `quxml_measured_work` does, which are those that are
// executed between the first and the last instruction of that function, and prints their number at the end:
//
//     qemu-arm -d plugin -plugin libemulator_counter.so PROGRAM [ARGUMENT...]
//
// Without "-d plugin" the emulator reads no names of functions, and prints nothing.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

// What is used of the interface, version 1; Debian's packages of the emulator have no header for it.
extern "C" {
struct qemu_info_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;

std::size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb* block);
qemu_plugin_insn* qemu_plugin_tb_get_insn(const qemu_plugin_tb* block, std::size_t index);
const char* qemu_plugin_insn_symbol(const qemu_plugin_insn* instruction);
void qemu_plugin_outs(const char* text);
void qemu_plugin_register_vcpu_tb_trans_cb(std::uint64_t id, void (*look)(std::uint64_t, qemu_plugin_tb*));
void qemu_plugin_register_vcpu_insn_exec_inline(qemu_plugin_insn* instruction, int operation, void* sum,
                                                std::uint64_t addend);
void qemu_plugin_register_vcpu_insn_exec_cb(qemu_plugin_insn* instruction, void (*note)(unsigned, void*),
                                            int flags, void* data);
void qemu_plugin_register_atexit_cb(std::uint64_t id, void (*end)(std::uint64_t, void*), void* data);

[[gnu::visibility("default")]] extern const int qemu_plugin_version;
[[gnu::visibility("default")]] int qemu_plugin_install(std::uint64_t id, const qemu_info_t* info, int argc,
                                                       char** argv);
}

namespace {

constexpr int add = 0;
constexpr int no_registers = 0;

/// Numbers of instructions since the program began.
struct Count {
    std::uint64_t now = 0;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
};

Count& count() {
    static Count only;
    return only;
}

void note_measured(unsigned /*processor*/, void* /*data*/) {
    count().last = count().now;
    if (count().first == 0)
        count().first = count().now;
}

bool is_in_measured_work(const qemu_plugin_insn* instruction) {
    const char* function = qemu_plugin_insn_symbol(instruction);
    return function != nullptr && std::strcmp(function, "quxml_measured_work") == 0;
}

void look_at_block(std::uint64_t /*id*/, qemu_plugin_tb* block) {
    for (std::size_t i = 0; i < qemu_plugin_tb_n_insns(block); ++i) {
        qemu_plugin_insn* instruction = qemu_plugin_tb_get_insn(block, i);
        qemu_plugin_register_vcpu_insn_exec_inline(instruction, add, &count().now, 1);
        if (is_in_measured_work(instruction))
            qemu_plugin_register_vcpu_insn_exec_cb(instruction, note_measured, no_registers, nullptr);
    }
}

void print_count(std::uint64_t /*id*/, void* /*data*/) {
    qemu_plugin_outs((std::to_string(count().last - count().first) + " instructions\n").c_str());
}

}  // namespace

const int qemu_plugin_version = 1;

int qemu_plugin_install(std::uint64_t id, const qemu_info_t* /*info*/, int /*argc*/, char** /*argv*/) {
    qemu_plugin_register_vcpu_tb_trans_cb(id, look_at_block);
    qemu_plugin_register_atexit_cb(id, print_count, nullptr);
    return 0;
}
