# Writes the include `Version` with the build identification of the version page.

function(ask_git result)
  execute_process(COMMAND git ${ARGN} WORKING_DIRECTORY ${SOURCE_FOLDER}
    OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
  if(failed OR answer STREQUAL "")
    set(answer unknown)
  endif()
  set(${result} "${answer}" PARENT_SCOPE)
endfunction()

function(default item value)
  if(KOVA_${item} STREQUAL "")
    set(KOVA_${item} "${value}" PARENT_SCOPE)
  endif()
endfunction()

# Names of branches may hold quotes.
function(append_text name value)
  string(REPLACE "\\" "\\\\" value "${value}")
  string(REPLACE "\"" "\\\"" value "${value}")
  string(APPEND content "inline constexpr const char *${name} = \"${value}\";\n")
  set(content "${content}" PARENT_SCOPE)
endfunction()

ask_git(revision rev-parse --short=12 HEAD)
# A tree that differs from its revision says so.
execute_process(COMMAND git diff --quiet HEAD -- WORKING_DIRECTORY ${SOURCE_FOLDER} ERROR_QUIET RESULT_VARIABLE differs)
if(differs EQUAL 1)
  string(APPEND revision "+")
endif()
ask_git(branch symbolic-ref --short HEAD) # none where a revision was checked out by its number
math(EXPR word_size "8 * ${POINTER_SIZE}")
default(MODEL_REVISION "${revision}")
default(MODEL_BRANCH "${branch}")
default(INTERFACE_REVISION unknown)
default(INTERFACE_BRANCH unknown)
default(PLATFORM "${DEFAULT_PLATFORM}")
default(ARCHITECTURE "${word_size}")
default(BUILD_TYPE "${DEFAULT_BUILD_TYPE}")

set(content "#pragma once\n\nnamespace kova_import::build_identification {\n\n")
foreach(item MODEL_REVISION MODEL_BRANCH INTERFACE_REVISION INTERFACE_BRANCH PLATFORM ARCHITECTURE BUILD_TYPE)
  string(TOLOWER ${item} name)
  append_text(${name} "${KOVA_${item}}")
endforeach()

if(KOVA_BUILD_TIME STREQUAL "")
  # SOURCE_DATE_EPOCH, where it is set, makes this the same in every build.
  string(TIMESTAMP KOVA_BUILD_TIME "%a, %d %b %Y %H:%M:%S +0000" UTC)
endif()
append_text(build_time "${KOVA_BUILD_TIME}")
string(APPEND content "\n} // namespace kova_import::build_identification\n")
# Written only when it has changed: nothing is compiled again for an identification that is given whole.
set(before "")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} before)
endif()
if(NOT content STREQUAL before)
  file(WRITE ${OUTPUT} "${content}")
endif()
