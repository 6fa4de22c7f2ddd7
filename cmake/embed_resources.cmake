# Puts the pictures of resources/ into the programs, for systems that have no resources of their
# own: the object library morvalis_resources. A folder that is missing or empty gives empty tables.

add_library(morvalis_picture_files STATIC
  ${PROJECT_SOURCE_DIR}/platform/resources/picture_files.cpp)
target_link_libraries(morvalis_picture_files PUBLIC morvalis_options)
add_executable(morvalis_embed_resources
  ${PROJECT_SOURCE_DIR}/platform/resources/embed_resources.cpp)
target_link_libraries(morvalis_embed_resources PRIVATE morvalis_picture_files)

file(GLOB MORVALIS_RESOURCE_FILES CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/resources/bitmaps/*.bmp
  ${PROJECT_SOURCE_DIR}/resources/icons/*.ico
  ${PROJECT_SOURCE_DIR}/resources/cursors/*.cur)
# Names the files, so that the tables are made anew when one goes away.
set(MORVALIS_RESOURCE_LIST ${PROJECT_BINARY_DIR}/resource_files.txt)
file(CONFIGURE OUTPUT ${MORVALIS_RESOURCE_LIST} CONTENT "${MORVALIS_RESOURCE_FILES}\n" @ONLY)

set(MORVALIS_RESOURCE_SOURCE ${PROJECT_BINARY_DIR}/resource_tables.cpp)
add_custom_command(OUTPUT ${MORVALIS_RESOURCE_SOURCE}
  COMMAND morvalis_embed_resources ${MORVALIS_RESOURCE_SOURCE} ${MORVALIS_RESOURCE_FILES}
  DEPENDS morvalis_embed_resources ${MORVALIS_RESOURCE_FILES} ${MORVALIS_RESOURCE_LIST}
  COMMENT "Embedding the resource pictures"
  VERBATIM)

add_library(morvalis_resources OBJECT
  ${MORVALIS_RESOURCE_SOURCE} ${PROJECT_SOURCE_DIR}/platform/resources/resource_table.cpp)
target_link_libraries(morvalis_resources PRIVATE morvalis_options)

# The packs of the larger scales, for back ends with windows: the object library morvalis_packs.
file(GLOB MORVALIS_PACK_FILES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/scaled/*.pack)
set(MORVALIS_PACK_SOURCE ${PROJECT_BINARY_DIR}/pack_tables.cpp)
add_custom_command(OUTPUT ${MORVALIS_PACK_SOURCE}
  COMMAND morvalis_embed_resources ${MORVALIS_PACK_SOURCE} ${MORVALIS_PACK_FILES}
  DEPENDS morvalis_embed_resources ${MORVALIS_PACK_FILES}
  COMMENT "Embedding the packed pictures"
  VERBATIM)
add_library(morvalis_packs OBJECT
  ${MORVALIS_PACK_SOURCE} ${PROJECT_SOURCE_DIR}/platform/resources/pack_table.cpp)
target_link_libraries(morvalis_packs PRIVATE morvalis_options)
