#pragma once
#include "apoyo/corrida_de_prueba.h"
#include "apoyo/sitio_de_prueba.h"

/// A run whose site writes down what it is asked.
struct CorridaConSitio : CorridaDePrueba {
    SitioDePrueba red{programa, escritores, registro, progreso, tolmo::site::Esperas{}};
    tolmo::sync::Corrida fase{.programa = programa,
                              .opciones = opciones,
                              .lote = lote,
                              .registro = registro,
                              .sitio = red,
                              .progreso = progreso};

    CorridaConSitio()
    {
        programa.parametros.WWW = QStringLiteral("http://casa/");
        // The texts of an article's phases come in several languages.
        programa.parametros.Idiomas = {Idioma(3), Idioma(1)};
    }
};
