walrim_fuzz(percent_escapes LINK walrim_text)
