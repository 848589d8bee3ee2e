walrim_fuzz(line_source LINK walrim_text)
