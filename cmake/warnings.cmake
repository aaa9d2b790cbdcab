# The warnings for this project's own sources. Users of the library get none of this.
function(kord_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wcast-align -Wcast-qual
    -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wdouble-promotion
    $<$<BOOL:${KORD_WERROR}>:-Werror>)
endfunction()
