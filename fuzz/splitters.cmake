walrim_fuzz(splitters LINK walrim_geo walrim_text)
