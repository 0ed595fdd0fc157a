# What tests need beside the sources: locales, real designs, expected outputs.
#
# LAMINATE_DESIGNS is a folder with one folder per real design, LAMINATE_EXPECTED one with outputs expected of them.
# Both are taken from the environment unless set. Without them the tests that need them are not built into the run;
# a place that is named but holds nothing is an error, so that a run never passes for want of designs.
#
#   if(LAMINATE_DESIGNS)
#     laminate_test(test_board_designs ROOM board SOURCES DesignsTest.cpp)
#   endif()
#
# A test reads the folder from the environment variable of the same name.
set(LAMINATE_DESIGNS "$ENV{LAMINATE_DESIGNS}" CACHE PATH "Folder of real designs, empty for none")
set(LAMINATE_EXPECTED "$ENV{LAMINATE_EXPECTED}" CACHE PATH "Folder of outputs expected of the real designs, empty for none")

function(laminate_require_filled variable pattern)
  if(NOT ${variable})
    return()
  endif()
  file(GLOB found LIST_DIRECTORIES false ${${variable}}/*/${pattern})
  if(NOT IS_ABSOLUTE "${${variable}}" OR NOT found)
    message(FATAL_ERROR "${variable} is set to '${${variable}}', which is no absolute path of a folder with */${pattern}")
  endif()
endfunction()
laminate_require_filled(LAMINATE_DESIGNS "*.pcf")
laminate_require_filled(LAMINATE_EXPECTED "*")

# The locales that tests set: with a decimal comma, in Shift-JIS, and with another small letter to "I". They are made in the build tree, so that no
# test depends on what is installed.
set(locales ${CMAKE_BINARY_DIR}/locales)
find_program(LAMINATE_LOCALEDEF localedef REQUIRED)
add_custom_command(OUTPUT ${locales}/de_DE.UTF-8/LC_NUMERIC
  COMMAND ${CMAKE_COMMAND} -E make_directory ${locales}
  COMMAND ${LAMINATE_LOCALEDEF} --no-archive -i de_DE -f UTF-8 ${locales}/de_DE.UTF-8 VERBATIM
  COMMENT "Making the locale de_DE.UTF-8")
add_custom_command(OUTPUT ${locales}/ja_JP.SJIS/LC_CTYPE
  COMMAND ${CMAKE_COMMAND} -E make_directory ${locales}
  # The charset swaps two ASCII characters for others, which localedef warns of.
  COMMAND ${LAMINATE_LOCALEDEF} --no-archive --no-warnings=ascii -c -i ja_JP -f SHIFT_JIS ${locales}/ja_JP.SJIS VERBATIM
  COMMENT "Making the locale ja_JP.SJIS")
add_custom_command(OUTPUT ${locales}/tr_TR.UTF-8/LC_CTYPE
  COMMAND ${CMAKE_COMMAND} -E make_directory ${locales}
  COMMAND ${LAMINATE_LOCALEDEF} --no-archive -i tr_TR -f UTF-8 ${locales}/tr_TR.UTF-8 VERBATIM
  COMMENT "Making the locale tr_TR.UTF-8")
add_custom_target(laminate_locales ALL
  DEPENDS ${locales}/de_DE.UTF-8/LC_NUMERIC ${locales}/ja_JP.SJIS/LC_CTYPE ${locales}/tr_TR.UTF-8/LC_CTYPE)

set(LAMINATE_TEST_ENVIRONMENT LOCPATH=${locales})
foreach(variable LAMINATE_DESIGNS LAMINATE_EXPECTED)
  if(${variable})
    list(APPEND LAMINATE_TEST_ENVIRONMENT ${variable}=${${variable}})
  endif()
endforeach()
