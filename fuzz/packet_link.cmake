walrim_fuzz(packet_link LINK walrim_device walrim_platform)
if(TARGET packet_link)
  target_include_directories(packet_link PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
