walrim_fuzz(convert_angle LINK walrim_geo walrim_text)
