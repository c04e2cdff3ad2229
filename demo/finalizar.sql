UPDATE {PS_PREFIJO}product_lang SET available_now='Sale en 48 horas' WHERE id_lang=1||
UPDATE {PS_PREFIJO}product_lang SET available_now='Ships in 48 hours' WHERE id_lang=2||
