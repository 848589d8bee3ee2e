walrim_fuzz(mps_script LINK walrim_formats)
