# The lints as tests: each prints the file and the line of what it finds.
foreach(lint layers words file_size comment_tags formatting shell test_share)
  add_test(NAME lint.${lint} COMMAND "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/Tools/lint/${lint}.py"
    WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")
  set_tests_properties(lint.${lint} PROPERTIES LABELS lint TIMEOUT 120 SKIP_RETURN_CODE 77)
endforeach()
add_test(NAME lint.translations COMMAND "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/Tools/lint/translations.py"
  --lupdate "$<TARGET_FILE:Qt6::lupdate>" WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")
set_tests_properties(lint.translations PROPERTIES LABELS lint TIMEOUT 120 SKIP_RETURN_CODE 77)
add_test(NAME lint.self COMMAND "${Python3_EXECUTABLE}" -m unittest discover --start-directory Tools/lint --pattern "*_test.py"
  WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")
set_tests_properties(lint.self PROPERTIES LABELS lint TIMEOUT 120)

find_program(QUIB_CLANG_TIDY clang-tidy)
if(QUIB_CLANG_TIDY AND QUIB_HEADER_CHECK)
  # Quick by default: the files that differ from the main line. QUIB_NIGHTLY=1 checks them all.
  add_test(NAME lint.tidy COMMAND "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/Tools/lint/tidy.py"
    --build "${PROJECT_BINARY_DIR}" WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")
  set_tests_properties(lint.tidy PROPERTIES LABELS lint TIMEOUT 3000 SKIP_RETURN_CODE 77)
endif()
