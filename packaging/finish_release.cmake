# Run by cpack once the installation lies staged, before it is packed: strips
# the plugin, keeping its debug information beside the package with a GNU
# debuglink to it, adds the README's installation section as INSTALL.txt and
# writes SHA256SUMS over every file of the package.
set(staged ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
set(plugin ${staged}/plugins/Beamwright.so)
set(debug ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.debug)

function(objcopy)
  execute_process(COMMAND ${CPACK_BEAMWRIGHT_OBJCOPY} ${ARGN} RESULT_VARIABLE rc ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "objcopy ${ARGN} failed: ${err}")
  endif()
endfunction()

# The debug file first, from the unstripped library; the link names it and
# carries its checksum, so a debugger finds it next to the .so or by build id.
objcopy(--only-keep-debug ${plugin} ${debug})
objcopy(--strip-unneeded ${plugin})
objcopy(--add-gnu-debuglink=${debug} ${plugin})

# The section from its heading up to the next heading of the same level.
set(heading "## Using it in a real installation")
file(READ ${CPACK_BEAMWRIGHT_README} readme)
string(FIND "${readme}" "${heading}\n" start)
if(start EQUAL -1)
  message(FATAL_ERROR "README.md has no section \"${heading}\"")
endif()
string(SUBSTRING "${readme}" ${start} -1 section)
string(LENGTH "${heading}" skip)
string(SUBSTRING "${section}" ${skip} -1 rest)
string(FIND "${rest}" "\n## " end)
if(NOT end EQUAL -1)
  math(EXPR end "${end} + ${skip} + 1")
  string(SUBSTRING "${section}" 0 ${end} section)
endif()
file(WRITE ${staged}/INSTALL.txt "${section}")

# In the format of sha256sum, so that `sha256sum -c SHA256SUMS` checks an unpacked copy.
file(GLOB_RECURSE files RELATIVE ${staged} ${staged}/*)
list(SORT files)
set(sums)
foreach(file IN LISTS files)
  file(SHA256 ${staged}/${file} sum)
  string(APPEND sums "${sum}  ${file}\n")
endforeach()
file(WRITE ${staged}/SHA256SUMS "${sums}")
message(STATUS "Debug information: ${debug}")
