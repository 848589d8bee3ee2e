walrim_fuzz(file_format LINK walrim_formats)
