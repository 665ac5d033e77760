# The system itself: five folders, one library, the standard library alone.
lumenfold_library(system FOLDERS addin model connections runtime SEES host basic)
target_link_libraries(system PUBLIC host basic)
