# The warnings that every target of ours is built with; each is an error.
# is not among them: COM interfaces have no virtual
# destructor by contract. Deleting through such a base is found by
# -Wdelete-non-virtual-dtor, which -Wall has.
add_library(tonewright_warnings INTERFACE)
target_compile_options(tonewright_warnings INTERFACE
    -Werror -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wcast-qual
    -Wformat=2 -Wundef -Woverloaded-virtual -Wextra-semi
    -Wmissing-declarations -Wvla)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tonewright_warnings INTERFACE
        -Wduplicated-cond -Wlogical-op -Wsuggest-override
        # COM and GetProcAddress cast between function types by contract.
        -Wno-cast-function-type)
endif()
