walrim_fuzz(standard_file LINK walrim_formats)
