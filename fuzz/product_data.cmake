walrim_fuzz(product_data LINK walrim_device)
