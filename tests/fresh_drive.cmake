# Empties the folder that stands for C: in the conformance runs, so that each
# ctest run starts from the same files.
file(REMOVE_RECURSE ${DIR})
file(MAKE_DIRECTORY ${DIR})
# With the Windows folder, where INI names without a folder land.
file(MAKE_DIRECTORY ${DIR}/Windows)
