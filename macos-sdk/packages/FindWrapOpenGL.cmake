# Qt's libraries name OpenGL among what they are linked with. Corvane calls none of it, and what is linked here is stubs.
if(NOT TARGET WrapOpenGL::WrapOpenGL)
    add_library(WrapOpenGL::WrapOpenGL INTERFACE IMPORTED)
endif()
set(WrapOpenGL_FOUND ON)
