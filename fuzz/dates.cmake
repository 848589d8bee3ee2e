walrim_fuzz(dates LINK walrim_text)
