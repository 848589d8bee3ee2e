walrim_fuzz(upload LINK walrim_device walrim_data walrim_platform)
if(TARGET upload)
  target_include_directories(upload PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
