# The commercial host in place of the embedded one: its SDK and Microsoft's MFC under the same names. Gives the target
# QXHost, to which the module links. Needs Visual C++ with MFC, and OBJECTARX_SDK, the folder of the SDK that fits the
# host's version.
if(NOT MSVC)
  message(FATAL_ERROR "QX_HOST=objectarx needs Visual C++ (this is ${CMAKE_CXX_COMPILER_ID})")
endif()
set(OBJECTARX_SDK "" CACHE PATH "Folder of the ObjectARX SDK (with inc, inc-x64 and lib-x64)")
if(NOT EXISTS "${OBJECTARX_SDK}/inc/arxEntryPoint.h")
  message(FATAL_ERROR "OBJECTARX_SDK must name the folder of the ObjectARX SDK: \
there is no \"${OBJECTARX_SDK}/inc/arxEntryPoint.h\"")
endif()

# MFC as a DLL, Unicode.
set(CMAKE_MFC_FLAG 2)
set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)

add_library(QXHost INTERFACE)
target_include_directories(QXHost SYSTEM INTERFACE ${OBJECTARX_SDK}/inc ${OBJECTARX_SDK}/inc-x64)
target_compile_definitions(QXHost INTERFACE _AFXDLL _AFXEXT _WINDOWS)
# MFC insists on being the first to include the system's headers.
target_precompile_headers(QXHost INTERFACE <afxwin.h> <afxext.h> <afxdialogex.h>)
# Some of the libraries carry the host's version in their names.
foreach(name rxapi acad accore ac1st* acdb* acge* acui* adui*)
  file(GLOB libraries ${OBJECTARX_SDK}/lib-x64/${name}.lib)
  if(NOT libraries)
    message(FATAL_ERROR "There is no ${name}.lib in ${OBJECTARX_SDK}/lib-x64")
  endif()
  target_link_libraries(QXHost INTERFACE ${libraries})
endforeach()
