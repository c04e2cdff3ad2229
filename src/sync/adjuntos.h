#pragma once

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// Puts the article's documents on the list of uploads. Only with the attachment flag.
void RecogeAdjuntos(Corrida& corrida, const Articulo& articulo);

/// Unlinks what the article had in the shop. Only with the attachment flag.
void BorraAdjuntos(Corrida& corrida, const Articulo& articulo);

/// Publishes the gathered documents, each path once, and links them to their articles.
void PublicaAdjuntos(Corrida& corrida);

} // namespace tolmo::sync
