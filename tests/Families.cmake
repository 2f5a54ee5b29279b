# Where only some families are built: which tests that leaves (testFilter), and a script for the linker that makes null
# of all functions that are not there (nullFunctions).
set(testFilter *)
set(nullFunctions)
if(KVLM_FAMILIES)
  # What tests any member, then what needs certain families.
  set(testFilter "Checks.*:Exports.*:Values.*:Memory.*:Processor.*:Driver.*:Routing.*:Frame.*")
  foreach(rule "add,sub,dotproduct,l2norm,saxpy,frobnorm=Vectors.*" "copy,extract,loadidentity,transpose=Moves.*" "mul=Products.*"
      "transpose=CacheSize.*:Streaming.*:Routines.*" "det,invert,lu=Accuracy/*.Determinants*"
      "cholesky=Accuracy/*.Cholesky*" "qr=Accuracy/*.QR*:LongBatches/*" "eigen=GeneralEigen/*:SymmetricEigenproblems/*")
    string(REGEX MATCH "^([^=]*)=(.*)" whole "${rule}")
    set(needed "${CMAKE_MATCH_1}")
    set(tests "${CMAKE_MATCH_2}")
    string(REPLACE "," ";" needed "${needed}")
    string(REPLACE "|" ";" given "${KVLM_FAMILIES}")
    list(REMOVE_ITEM needed ${given})
    if(NOT needed)
      string(APPEND testFilter ":${tests}")
    endif()
  endforeach()
  set(nullFunctions "${CMAKE_CURRENT_BINARY_DIR}/null_functions.ld")
  execute_process(COMMAND bash -c "source '${surface}/names.sh'; shopt -s nocasematch
    expandNames . | while read -r name; do
      [[ $name =~ ^(ownm?_?|ownOMP_|a6_)?(kvlm)?(${KVLM_FAMILIES}|GetLibVersion|i?Transpose_(32s|16u)) ]] || echo \"$name = 0;\"
    done"
    OUTPUT_FILE "${nullFunctions}" COMMAND_ERROR_IS_FATAL ANY)
  add_link_options(-no-pie) # in a program that may be moved, null would move too
endif()
