walrim_fuzz(download LINK walrim_device walrim_data walrim_platform)
if(TARGET download)
  target_include_directories(download PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
