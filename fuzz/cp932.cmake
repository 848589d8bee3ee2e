walrim_fuzz(cp932 LINK walrim_text)
