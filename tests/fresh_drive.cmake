# Empties the folders that stand for C: in the conformance runs and the tour,
# so that each ctest run starts from the same files; each gets the Windows
# folder, where INI names without a folder land.
foreach(dir ${DIRS})
  file(REMOVE_RECURSE ${dir})
  file(MAKE_DIRECTORY ${dir}/Windows)
endforeach()
