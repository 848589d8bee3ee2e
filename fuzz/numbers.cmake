walrim_fuzz(numbers LINK walrim_text)
