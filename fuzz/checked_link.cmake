walrim_fuzz(checked_link LINK walrim_device)
