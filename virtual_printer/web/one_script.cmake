# Modules as one script: a browser would ask for each by itself, and for what a module imports only when it has read that.

# Puts a module and, in front of it, all that it imports into the variable `script`, each once, as a function that
# gives what the module exports. Understands what the page's modules are written in: one import a line, by names; and
# exports of functions, classes and constants.
function(telvofm_add_module script folder module)
    get_property(modules GLOBAL PROPERTY telvofm_modules_of_${script})
    if(module IN_LIST modules)
        return()
    endif()
    set_property(GLOBAL APPEND PROPERTY telvofm_modules_of_${script} ${module})
    file(READ ${folder}/${module}.js content)
    string(REGEX MATCHALL "from \"\\./[a-z_]+\\.js\"" imports "${content}")
    foreach(import IN LISTS imports)
        string(REGEX REPLACE ".*/([a-z_]+)\\.js.*" "\\1" imported "${import}")
        telvofm_add_module(${script} ${folder} ${imported})
    endforeach()
    string(REGEX MATCHALL "\nexport (async )?(function|class|const) [A-Za-z]+" exports "${content}")
    set(names "")
    foreach(export IN LISTS exports)
        string(REGEX REPLACE ".* ([A-Za-z]+)$" "\\1" name "${export}")
        string(APPEND names "${name}, ")
    endforeach()
    string(REGEX REPLACE "import ({[^}]*}) from \"\\./([a-z_]+)\\.js\";" "const \\1 = \\2_js;" content "${content}")
    string(REGEX REPLACE "\nexport " "\n" content "${content}")
    if(content MATCHES "\n(import|export) ")
        message(FATAL_ERROR "${module}.js imports or exports in a form that this script does not know")
    endif()
    set_property(GLOBAL APPEND_STRING PROPERTY telvofm_text_of_${script}
        "const ${module}_js = (() => {\n${content}return { ${names}};\n})();\n")
endfunction()

function(telvofm_one_script script folder module)
    telvofm_add_module(${script} ${folder} ${module})
    get_property(text GLOBAL PROPERTY telvofm_text_of_${script})
    set(${script} "${text}" PARENT_SCOPE)
endfunction()
