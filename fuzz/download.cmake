walrim_fuzz(download LINK walrim_device)
