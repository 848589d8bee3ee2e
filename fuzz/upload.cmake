walrim_fuzz(upload LINK walrim_device)
