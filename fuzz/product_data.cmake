walrim_fuzz(product_data LINK walrim_device walrim_data walrim_platform walrim_text)
if(TARGET product_data)
  target_include_directories(product_data PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
