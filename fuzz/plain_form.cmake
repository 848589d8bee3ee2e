walrim_fuzz(plain_form LINK walrim_records)
