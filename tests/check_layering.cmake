# Fails when a file includes a header from a folder above its own. The plugin's
# folders stand in layers, each including only those below it:
#   plugin/  >  placement/, handles/  >  scene/  >  frame/  >  support/
# and the stand-in host, and the applications built on it, never include the
# plugin's headers: they meet the plugin only through the binary contract, so a
# contract mismatch shows as a failing test instead of compiling away.
# Within the host, the rooms stand in layers too: core/ below viewer/, below
# siblings/, and the demo renderer (render/) above them all, since nothing of
# the contract needs it. Within the applications, reading and writing scenes
# (scene/) stands below the viewer's session and tour (viewer/), below the
# window (window/).
set(forbidden_support  frame scene placement handles plugin host)
set(forbidden_frame    scene placement handles plugin host)
set(forbidden_scene    placement handles plugin host)
set(forbidden_placement handles plugin host)
set(forbidden_handles  placement plugin host)
set(forbidden_plugin   host)
set(forbidden_host     frame scene placement handles support plugin)
set(forbidden_apps     frame scene placement handles support plugin)
set(forbidden_host/core     host/viewer host/siblings host/render)
set(forbidden_host/viewer   host/siblings host/render)
set(forbidden_host/siblings host/render)
set(forbidden_apps/scene    apps/viewer apps/window)
set(forbidden_apps/viewer   apps/window)

set(violations)
foreach(folder support frame scene placement handles plugin host apps
               host/core host/viewer host/siblings apps/scene apps/viewer)
  file(GLOB_RECURSE sources ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
  string(JOIN "|" upper ${forbidden_${folder}})
  foreach(source IN LISTS sources)
    file(STRINGS ${source} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"(${upper})/")
    foreach(line IN LISTS includes)
      file(RELATIVE_PATH name ${SOURCE_DIR} ${source})
      string(STRIP "${line}" line)
      list(APPEND violations "${name}: ${line}")
    endforeach()
  endforeach()
endforeach()

if(violations)
  string(JOIN "\n  " report ${violations})
  message(FATAL_ERROR "includes from a folder above:\n  ${report}")
endif()
message(STATUS "every include points downwards")
