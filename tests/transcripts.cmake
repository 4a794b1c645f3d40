# What the screen reader says: five journeys in five languages against the kept transcripts, and the journeys move by
# move. Each case runs vesk-host in a folder of its own.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(FOLDER ${CMAKE_CURRENT_LIST_DIR}/transcripts)
set(PROGRAMS ${CMAKE_BINARY_DIR}/bin)
set(CASES "")

file(GLOB JOURNEYS CONFIGURE_DEPENDS ${FOLDER}/*.journey)
foreach(JOURNEY IN LISTS JOURNEYS)
  get_filename_component(JOURNEY ${JOURNEY} NAME_WE)
  foreach(LANGUAGE en_GB de_DE ko_KR ar_AE he_IL)
    add_test(NAME transcript.${JOURNEY}.${LANGUAGE} COMMAND ${Python3_EXECUTABLE} -B
      ${PROJECT_SOURCE_DIR}/tools/transcripts.py check --bin ${PROGRAMS} --journey ${JOURNEY} --language ${LANGUAGE})
    list(APPEND CASES transcript.${JOURNEY}.${LANGUAGE})
  endforeach()
endforeach()

# The cases of transcripts_test.py, as it names them.
set(TEST_FILE ${FOLDER}/transcripts_test.py)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${TEST_FILE})
file(STRINGS ${TEST_FILE} LINES REGEX "^class .*\\(Case\\)|^    def test_")
foreach(LINE IN LISTS LINES)
  if(LINE MATCHES "^class ([A-Za-z]+)")
    set(GROUP ${CMAKE_MATCH_1})
  elseif(LINE MATCHES "def (test_[a-z_]+)")
    add_test(NAME transcript.${GROUP}.${CMAKE_MATCH_1}
      COMMAND ${Python3_EXECUTABLE} -B ${TEST_FILE} ${GROUP}.${CMAKE_MATCH_1})
    list(APPEND CASES transcript.${GROUP}.${CMAKE_MATCH_1})
  endif()
endforeach()
set_tests_properties(${CASES} PROPERTIES LABELS e2e TIMEOUT 120 ${VESK_NO_SKIPPED_TEST}
  ENVIRONMENT "BIN=${PROGRAMS};${VESK_TEST_ENVIRONMENT}")
