# Per-level compilation of kernel units.
#
# A kernel unit (a *.simd.cpp file) is compiled once for each processor level
# it lists, each time with that level's instruction-set flags and with
# PXL_LEVEL set, so that its code lands in the namespace pxl::l<level>.  A
# level the unit does not list reuses the nearest lower level it does list.
# The resulting level map of every unit is written to pxl_units.h, from which
# core/dispatch.cpp builds each kernel's table; the levels the unit lists are
# written beside it, for the tests that check the map and the tables.

set(PXL_LEVEL_FLAGS_0 -msse2 -msse3)
set(PXL_LEVEL_FLAGS_1 ${PXL_LEVEL_FLAGS_0} -mssse3 -msse4.1)
set(PXL_LEVEL_FLAGS_2 ${PXL_LEVEL_FLAGS_1} -msse4.2)
set(PXL_LEVEL_FLAGS_3 ${PXL_LEVEL_FLAGS_2} -mavx)
set(PXL_LEVEL_FLAGS_4 ${PXL_LEVEL_FLAGS_3} -mavx2 -mfma -mbmi -mbmi2)
# GCC 12 reports the undefined pass-through operand inside its own AVX-512
# intrinsics as maybe-uninitialized; the same sources are still checked for
# that warning at every other level.
set(PXL_LEVEL_FLAGS_5 ${PXL_LEVEL_FLAGS_4} -mavx512f -mavx512cd -mavx512bw -mavx512dq -mavx512vl
    -Wno-maybe-uninitialized)

set(PXL_GEN_DIR ${PROJECT_BINARY_DIR}/gen)
set_property(GLOBAL PROPERTY PXL_UNIT_SOURCES "")
set_property(GLOBAL PROPERTY PXL_UNIT_DEFINES "")

# pxl_kernel_unit(<source> LEVELS <l>...)
function(pxl_kernel_unit src)
  cmake_parse_arguments(U "" "" "LEVELS" ${ARGN})
  if(NOT DEFINED U_LEVELS)
    message(FATAL_ERROR "pxl_kernel_unit(${src}): LEVELS is required")
  endif()
  list(GET U_LEVELS 0 first)
  if(NOT first EQUAL 0)
    message(FATAL_ERROR "pxl_kernel_unit(${src}): the first level must be 0")
  endif()
  if(PXL_BASELINE_ONLY)
    set(U_LEVELS 0)
  endif()
  get_filename_component(unit ${src} NAME_WE)

  set(map "")
  set(current 0)
  foreach(level RANGE 0 5)
    list(FIND U_LEVELS ${level} found)
    if(NOT found EQUAL -1)
      set(current ${level})
    endif()
    list(APPEND map ${current})
  endforeach()
  string(REPLACE ";" "," map "${map}")
  string(REPLACE ";" " " listed "${U_LEVELS}")
  set_property(GLOBAL APPEND_STRING PROPERTY PXL_UNIT_DEFINES
               "#define PXL_UNIT_${unit} (${map})\n#define PXL_UNIT_LISTED_${unit} \"${listed}\"\n")

  foreach(level ${U_LEVELS})
    set(out ${PXL_GEN_DIR}/${unit}.l${level}.cpp)
    file(CONFIGURE OUTPUT ${out}
         CONTENT "#define PXL_LEVEL ${level}\n#include \"${PROJECT_SOURCE_DIR}/${src}\"\n")
    set_source_files_properties(${out} PROPERTIES COMPILE_OPTIONS "${PXL_LEVEL_FLAGS_${level}}")
    set_property(GLOBAL APPEND PROPERTY PXL_UNIT_SOURCES ${out})
  endforeach()
endfunction()

# Writes pxl_units.h; call once after every unit is declared.
function(pxl_write_unit_map)
  get_property(defs GLOBAL PROPERTY PXL_UNIT_DEFINES)
  file(CONFIGURE OUTPUT ${PXL_GEN_DIR}/pxl_units.h
       CONTENT "/* Generated: processor level used by each kernel unit at levels 0..5. */\n${defs}")
endfunction()
