#pragma once

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// The records ps_product, ps_product_shop and ps_product_lang of an article.
///
/// The two differ on purpose. The insert alone sets wholesale_price, ean13, location, active,
/// indexed, out_of_stock, reference and date_add, so that a product switched off in the shop stays
/// off; it writes a blank behind the notes. Manufacturer, supplier's reference, weight and
/// cache_has_attachments stand in ps_product only.
void CambiaProducto(Corrida& corrida, const Articulo& articulo);
void InsertaProducto(Corrida& corrida, const Articulo& articulo);

} // namespace tolmo::sync
