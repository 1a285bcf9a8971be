# The layers of the library, one static library per folder of src/, and the export layer on top.
#
# A layer sees its own headers and those of the layers it links, nothing else: each layer's
# headers are reached through an include root of their own (build/layers/<layer>, holding one
# link named after the layer to src/<layer>), and a layer gets another layer's root only by
# linking it. An include that points up or sideways therefore fails to compile. The graph is
# drawn in docs/layers.md; keep the two in step.
#
# PUBLIC links are layers whose types appear in this layer's headers; PRIVATE links are used by
# the sources alone and do not pass on to the layers above.

function(zel_add_layer layer)
  cmake_parse_arguments(ARG "" "" "PUBLIC;PRIVATE" ${ARGN})
  set(target zel_${layer})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${layer}/*.cpp)
  set(root ${PROJECT_BINARY_DIR}/layers/${layer})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${layer} ${root}/${layer} SYMBOLIC)
  if(sources)
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${root}>)
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE}
      zel_build_options zel_instrumentation)
  else()
    # A layer still without code keeps its place in the graph.
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE $<BUILD_INTERFACE:${root}>)
    target_link_libraries(${target} INTERFACE ${ARG_PUBLIC})
  endif()
endfunction()

zel_add_layer(platform PRIVATE Threads::Threads)
zel_add_layer(sdk PRIVATE zel_platform ZLIB::ZLIB)
zel_add_layer(wire PUBLIC zel_sdk PRIVATE zel_platform)
zel_add_layer(commands PUBLIC zel_wire zel_sdk PRIVATE zel_platform)
zel_add_layer(render PUBLIC zel_sdk PkgConfig::CAIRO PRIVATE PkgConfig::FREETYPE)
zel_add_layer(program PUBLIC zel_render zel_sdk)
zel_add_layer(clock PUBLIC zel_program zel_render zel_sdk)
zel_add_layer(dynamic PUBLIC zel_clock zel_commands)

# The export layer: the C functions of include/zel_sdk_dual.h. The only code that sees the
# public header and its packed records; each entry unpacks them and calls the layers beneath.
file(GLOB ZEL_EXPORT_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/exports/*.cpp)
set(ZEL_EXPORTS_ROOT ${PROJECT_BINARY_DIR}/layers/exports)
file(MAKE_DIRECTORY ${ZEL_EXPORTS_ROOT})
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/exports ${ZEL_EXPORTS_ROOT}/exports SYMBOLIC)
add_library(zel_exports OBJECT ${ZEL_EXPORT_SOURCES})
target_include_directories(zel_exports PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${ZEL_EXPORTS_ROOT}>)
target_compile_definitions(zel_exports PUBLIC ZEL_SDK_DUAL_BUILD)
target_link_libraries(zel_exports
  PUBLIC zel_dynamic zel_clock zel_program zel_render zel_commands zel_wire zel_sdk zel_platform
         zel_instrumentation
  PRIVATE zel_build_options)
