walrim_fuzz(standard_file LINK walrim_data walrim_geo walrim_text)
