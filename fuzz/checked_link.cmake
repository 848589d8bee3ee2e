walrim_fuzz(checked_link LINK walrim_device walrim_platform)
if(TARGET checked_link)
  target_include_directories(checked_link PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
