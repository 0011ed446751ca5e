# The MP3 encoder LAME, which has no file of its own for pkg-config: the target Lame::Lame.

find_path(Lame_INCLUDE_DIR lame/lame.h)
find_library(Lame_LIBRARY mp3lame)
mark_as_advanced(Lame_INCLUDE_DIR Lame_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Lame REQUIRED_VARS Lame_LIBRARY Lame_INCLUDE_DIR)

if(Lame_FOUND AND NOT TARGET Lame::Lame)
    add_library(Lame::Lame UNKNOWN IMPORTED)
    set_target_properties(Lame::Lame PROPERTIES
        IMPORTED_LOCATION "${Lame_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Lame_INCLUDE_DIR}")
endif()
