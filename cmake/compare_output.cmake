# SPDX-License-Identifier: MIT

# Runs `program`, a file or a command, and fails unless it ends well and prints exactly what stands in the file `expected`.
execute_process(COMMAND ${program} OUTPUT_VARIABLE printed RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${program} ended with ${result}, having printed:\n${printed}")
endif()
file(READ ${expected} wanted)
if(NOT printed STREQUAL wanted)
  message(FATAL_ERROR "expected (${expected}):\n${wanted}\nprinted:\n${printed}")
endif()
