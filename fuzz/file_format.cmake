walrim_fuzz(file_format LINK walrim_app walrim_text)
