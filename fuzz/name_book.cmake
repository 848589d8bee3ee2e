walrim_fuzz(name_book LINK walrim_preflight)
