# Warnings and sanitizers, the same for every target.
add_compile_options(-Wall -Wextra -Wformat=2 -Wnon-virtual-dtor)
if(LUMENPANEL_WERROR)
    add_compile_options(-Werror)
endif()
if(LUMENPANEL_SANITIZE)
    add_compile_options(-fsanitize=${LUMENPANEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${LUMENPANEL_SANITIZE})
endif()
