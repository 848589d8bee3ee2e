walrim_fuzz(mps_statement LINK walrim_formats)
