walrim_fuzz(sound_download LINK walrim_device walrim_data walrim_platform)
if(TARGET sound_download)
  target_include_directories(sound_download PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
