walrim_fuzz(wpt_reader LINK walrim_formats)
