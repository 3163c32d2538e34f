# Helper programs stand to the agent in the build tree as where they are installed, so that the agent finds
# them from its own place.
file(RELATIVE_PATH VANTREL_LIBEXEC_FROM_BIN ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBEXECDIR}/vantrel)
cmake_path(SET VANTREL_LIBEXEC_IN_BUILD_TREE NORMALIZE ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${VANTREL_LIBEXEC_FROM_BIN})
