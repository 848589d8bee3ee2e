walrim_fuzz(splitters LINK walrim_text)
