# Empties the folders that stand for C: in the conformance runs and the tour,
# so that each ctest run starts from the same files.
foreach(dir ${DIRS})
  file(REMOVE_RECURSE ${dir})
  file(MAKE_DIRECTORY ${dir})
endforeach()
