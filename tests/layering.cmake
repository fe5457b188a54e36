# Which layer may include which: every layer's include directories, as its
# library is compiled with them, are tried on one header of every layer. A
# header of the layer itself or of a layer below must be found; any other must
# fail with "No such file", whatever the build files say about the layers.
#
# cmake -DCXX=<compiler> -DSOURCE_DIR=<src> -DWORK_DIR=<dir>
#       -DINCLUDES_<layer>=<dir>|<dir>... -P layering.cmake
set(layers hwsupport report program dialogs telematics tabs app)
set(sees_hwsupport hwsupport)
set(sees_report hwsupport report)
set(sees_program hwsupport report program)
set(sees_dialogs hwsupport dialogs)
set(sees_telematics hwsupport dialogs telematics)
set(sees_tabs hwsupport report dialogs telematics tabs)
set(sees_app hwsupport report dialogs telematics tabs app)

file(MAKE_DIRECTORY ${WORK_DIR})
set(failures "")
foreach(target ${layers})
    if(NOT DEFINED INCLUDES_${target})
        message(FATAL_ERROR "no include directories given for ${target}")
    endif()
    string(REPLACE "|" ";" directories "${INCLUDES_${target}}")
    set(flags "")
    foreach(directory ${directories})
        list(APPEND flags "-I${directory}")
    endforeach()
    foreach(layer ${layers})
        file(GLOB headers RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/${layer}/*.h)
        list(SORT headers)
        list(GET headers 0 header)
        set(probe ${WORK_DIR}/${target}-${layer}.cpp)
        file(WRITE ${probe} "#include \"${header}\"\n")
        execute_process(COMMAND ${CXX} -std=c++17 -E ${flags} ${probe} -o /dev/null
            RESULT_VARIABLE status ERROR_VARIABLE errors OUTPUT_QUIET)
        string(FIND "${errors}" "${header}: No such file" missing)
        list(FIND sees_${target} ${layer} allowed)
        if(allowed GREATER_EQUAL 0 AND NOT missing EQUAL -1)
            string(APPEND failures "${target} cannot include ${header}\n")
        elseif(allowed EQUAL -1 AND (status EQUAL 0 OR missing EQUAL -1))
            string(APPEND failures "${target} can include ${header}\n")
        endif()
    endforeach()
endforeach()
if(failures)
    message(FATAL_ERROR "Layering broken:\n${failures}")
endif()
