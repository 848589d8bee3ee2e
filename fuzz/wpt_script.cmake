walrim_fuzz(wpt_script LINK walrim_formats)
