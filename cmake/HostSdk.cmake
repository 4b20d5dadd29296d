# hostsdk: the host's SDK as the product sees it. Which one is chosen here and nowhere else:
# the vendor's at MAXSDK_PATH, or the headers and the library of the stand-in host, which in native
# builds brings the few Windows calls along.
add_library(hostsdk INTERFACE)
if(MAXSDK_PATH)
    target_include_directories(hostsdk SYSTEM INTERFACE ${MAXSDK_PATH}/include)
    target_link_directories(hostsdk INTERFACE ${MAXSDK_PATH}/lib/x64/Release)
    target_link_libraries(hostsdk INTERFACE
        core geom mesh maxutil paramblk2 gfx assetmanagement Maxscrpt)
else()
    target_link_libraries(hostsdk INTERFACE simhost_core)
endif()
