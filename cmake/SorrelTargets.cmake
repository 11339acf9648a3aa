# What every target of the project has in common, and the functions that declare them.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# The program finds its tools and pages by their place relative to its own, so the build tree has the installed tree's shape.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(SORREL_LIBEXEC_DIR "libexec/sorrel")
set(SORREL_DATA_DIR "share/sorrel")

# A parameter may have the name of the member that it sets.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Werror $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>)
add_compile_definitions(
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)
# A program links only the libraries it really calls: the capture tool must not load a toolkit that it doesn't use.
add_link_options(-Wl,--as-needed)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
    # Paths below the source tree count as relative, so that all checkouts share one cache.
    ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()

# The one precompiled header, of Qt Core only: every library that uses Qt takes it.
function(sorrel_precompiled_header)
  file(WRITE "${CMAKE_BINARY_DIR}/pch/pch.cpp" "")
  add_library(sorrel_pch STATIC "${CMAKE_BINARY_DIR}/pch/pch.cpp")
  target_link_libraries(sorrel_pch PUBLIC Qt6::Core)
  target_precompile_headers(sorrel_pch PRIVATE
    <QByteArray> <QCoreApplication> <QDateTime> <QDir> <QFile> <QFileInfo> <QHash> <QJsonDocument> <QJsonObject>
    <QObject> <QString> <QStringList> <QTimer> <QUrl> <QVariant> <algorithm> <functional> <memory> <optional> <vector>)
endfunction()

# sorrel_library(name SOURCES ... LINKS ... [NO_QT])
# A folder's static library. NO_QT leaves the precompiled header out, for code that must not depend on Qt.
function(sorrel_library name)
  cmake_parse_arguments(ARG "NO_QT" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
  if(NOT ARG_NO_QT)
    if(NOT TARGET sorrel_pch)
      sorrel_precompiled_header()
    endif()
    target_link_libraries(${name} PUBLIC Qt6::Core)
    target_precompile_headers(${name} REUSE_FROM sorrel_pch)
  endif()
endfunction()
